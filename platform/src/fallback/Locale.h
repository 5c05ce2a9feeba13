#pragma once

#include <string>

#include <unicode/uscript.h>

namespace platform {

/// The name under which Fontconfig knows the language of a BCP 47 locale name: "ja", "pa-pk", "zh-cn" for zh-Hans,
/// "zh-tw" for zh-Hant. Empty for an empty or malformed name.
std::string fontconfigLanguage(const std::wstring& locale);

/// The language, as Fontconfig names it, whose letters tell which font is made for a script: `language` itself if it is
/// written in that script, else the one that is written in it most. Empty where that would be a guess: Han belongs to
/// Chinese, Japanese and Korean alike.
std::string languageOfScript(UScriptCode script, const std::string& language);

} // namespace platform
