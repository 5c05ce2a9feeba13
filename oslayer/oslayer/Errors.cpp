#include <oslayer/Errors.h>

namespace oslayer {

EOsLayerError::~EOsLayerError() = default;
EDxDeviceRemoved::~EDxDeviceRemoved() = default;

} // namespace oslayer
