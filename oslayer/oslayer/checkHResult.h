#pragma once

#include <Common/FontEngineExport.h>
#include <Common/SourcePath.h>

#include <unknwn.h>

#include <cstdint>

namespace oslayer {

/// Logs and throws what checkHResult says for a result that is known to be negative.
[[noreturn]] FONTENGINE_API void throwFailedHResult(const char* file, std::int32_t line, const char* expression,
                                                    HRESULT result);

/// Returns if `result` is a success (not negative). Otherwise logs source path, line, expression and the status name
/// or code, and throws EDxDeviceRemoved on loss of the device, else EOsLayerError, with the name alone ("COM call
/// failed" for a code without name). `file` may be null. Throws std::range_error if the name cannot be converted.
inline void checkHResult(const char* file, std::int32_t line, const char* expression, HRESULT result) {
    if (result < 0) [[unlikely]] {
        throwFailedHResult(file, line, expression, result);
    }
}

} // namespace oslayer

/// Makes a platform call and checks its result; the call's own source text is the expression. Line breaks inside the
/// call count as one blank.
#define OSLAYER_CHECK(...) ::oslayer::checkHResult(COMMON_SOURCE_PATH, __LINE__, #__VA_ARGS__, (__VA_ARGS__))
