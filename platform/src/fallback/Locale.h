#pragma once

#include <string>

namespace platform {

/// The name under which Fontconfig knows the language of a BCP 47 locale name: "ja-jp", "zh-cn" for zh-Hans, "zh-tw"
/// for zh-Hant. Empty for an empty or malformed name.
std::string fontconfigLanguage(const std::wstring& locale);

} // namespace platform
