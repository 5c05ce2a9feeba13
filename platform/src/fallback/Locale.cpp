#include "fallback/Locale.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <memory>

#include <fontconfig/fontconfig.h>
#include <unicode/uloc.h>

namespace platform {

namespace {

using Buffer = std::array<char, ULOC_FULLNAME_CAPACITY>;

using Part = std::int32_t (*)(const char*, char*, std::int32_t, UErrorCode*);

std::string partOf(const Buffer& locale, Part part) {
    Buffer text{};
    UErrorCode error = U_ZERO_ERROR;
    part(locale.data(), text.data(), static_cast<std::int32_t>(text.size()) - 1, &error);
    std::string result = U_SUCCESS(error) ? text.data() : "";
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

Buffer withLikelyParts(const char* locale) {
    Buffer likely{};
    UErrorCode error = U_ZERO_ERROR;
    uloc_addLikelySubtags(locale, likely.data(), static_cast<std::int32_t>(likely.size()) - 1, &error);
    return U_SUCCESS(error) ? likely : Buffer{};
}

// Fontconfig tells the ways of writing Chinese apart by region only.
std::string chineseRegion(const Buffer& locale) {
    const Buffer full = withLikelyParts(locale.data());
    const std::string region = partOf(full, uloc_getCountry);
    if (partOf(full, uloc_getScript) == "hans") {
        return region == "sg" ? region : "cn";
    }
    return region == "hk" || region == "mo" ? region : "tw";
}

bool isKnownToFontconfig(const std::string& language) {
    struct Destroy {
        void operator()(FcStrSet* set) const { FcStrSetDestroy(set); }
    };
    const std::unique_ptr<FcStrSet, Destroy> known(FcGetLangs());
    return known && FcStrSetMember(known.get(), reinterpret_cast<const FcChar8*>(language.c_str())) != FcFalse;
}

std::string fontconfigName(const Buffer& locale) {
    std::string language = partOf(locale, uloc_getLanguage);
    if (language == "zh") {
        return "zh-" + chineseRegion(locale);
    }
    // Most languages are known without a region, and rules of a configuration name them so.
    const std::string withRegion = language + "-" + partOf(locale, uloc_getCountry);
    return isKnownToFontconfig(withRegion) ? withRegion : language;
}

bool isWrittenIn(const std::string& language, UScriptCode script) {
    std::array<UScriptCode, 8> scripts{};
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t count =
        uscript_getCode(language.c_str(), scripts.data(), static_cast<std::int32_t>(scripts.size()), &error);
    return U_SUCCESS(error) && std::find(scripts.begin(), scripts.begin() + count, script) != scripts.begin() + count;
}

} // namespace

std::string fontconfigLanguage(const std::wstring& locale) {
    std::string tag;
    for (const wchar_t c : locale) {
        if (c <= 0 || c > 0x7E) {
            return {};
        }
        tag.push_back(static_cast<char>(c));
    }
    Buffer id{};
    UErrorCode error = U_ZERO_ERROR;
    uloc_forLanguageTag(tag.c_str(), id.data(), static_cast<std::int32_t>(id.size()) - 1, nullptr, &error);
    return U_SUCCESS(error) && id.front() != '\0' ? fontconfigName(id) : "";
}

std::string languageOfScript(UScriptCode script, const std::string& language) {
    if (!language.empty() && isWrittenIn(language, script)) {
        return language;
    }
    const char* const name = uscript_getShortName(script);
    if (script == USCRIPT_HAN || script == USCRIPT_COMMON || name == nullptr) {
        return {};
    }
    const Buffer likely = withLikelyParts((std::string("und_") + name).c_str());
    const std::string found = likely.front() != '\0' ? fontconfigName(likely) : "";
    return found == "und" ? "" : found;
}

} // namespace platform
