#pragma once

#include <Common/Exception.h>
#include <Common/FontEngineExport.h>

namespace oslayer {

/// A call into the platform's text or graphics services failed. `what()` is the symbolic name of the status, or
/// "COM call failed" when it has none; the call itself is in the log.
class FONTENGINE_API EOsLayerError : public common::EException {
public:
    using EException::EException;
    EOsLayerError(const EOsLayerError&) = default;
    EOsLayerError& operator=(const EOsLayerError&) = default;
    ~EOsLayerError() override;
};

/// The graphics device is gone or has to be made anew.
class FONTENGINE_API EDxDeviceRemoved : public EOsLayerError {
public:
    using EOsLayerError::EOsLayerError;
    EDxDeviceRemoved(const EDxDeviceRemoved&) = default;
    EDxDeviceRemoved& operator=(const EDxDeviceRemoved&) = default;
    ~EDxDeviceRemoved() override;
};

} // namespace oslayer
