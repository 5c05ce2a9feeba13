#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace dxf {

/// A drawing's code page is certain only at its end: the header may be missing, late, or contradicted by the texts.
/// Until then every string of the model holds the file's bytes, one per element; see StringDecoder.
inline std::wstring widened(std::string_view bytes) {
    std::wstring result(bytes.size(), L'\0');
    std::ranges::transform(bytes, result.begin(),
                           [](char c) { return static_cast<wchar_t>(static_cast<unsigned char>(c)); });
    return result;
}

/// The bytes that widened() took.
inline std::string bytesOf(std::wstring_view wide) {
    std::string result(wide.size(), '\0');
    std::ranges::transform(wide, result.begin(), [](wchar_t c) { return static_cast<char>(c); });
    return result;
}

} // namespace dxf
