#pragma once

#include "FontEngineExport.h"

#include <string>
#include <string_view>

namespace common {

/// UTF-8 to wide text: UTF-16, one code unit per element, whatever the width of wchar_t. Every maximal ill-formed part
/// of the input (a stray byte, a truncated or overlong sequence, an encoded surrogate) becomes one U+FFFD, as Unicode
/// recommends.
[[nodiscard]] FONTENGINE_API std::wstring wideFromUtf8(std::string_view text);

/// Wide text (UTF-16, one code unit per element) to UTF-8. A lone surrogate becomes U+FFFD, and so does an element
/// above 0xFFFF, which a wide wchar_t could hold but UTF-16 cannot.
[[nodiscard]] FONTENGINE_API std::string utf8FromWide(std::wstring_view text);

} // namespace common
