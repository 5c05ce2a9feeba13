#include "fallback/Locale.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>

#include <unicode/uloc.h>

namespace platform {

namespace {

using Buffer = std::array<char, ULOC_FULLNAME_CAPACITY>;

using Part = std::int32_t (*)(const char*, char*, std::int32_t, UErrorCode*);

std::string partOf(const Buffer& locale, Part part) {
    std::array<char, ULOC_FULLNAME_CAPACITY> text{};
    UErrorCode error = U_ZERO_ERROR;
    part(locale.data(), text.data(), static_cast<std::int32_t>(text.size()) - 1, &error);
    std::string result = U_SUCCESS(error) ? text.data() : "";
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

// Fontconfig tells the two ways of writing Chinese apart by region only.
std::string chineseRegion(const Buffer& locale) {
    Buffer likely{};
    UErrorCode error = U_ZERO_ERROR;
    uloc_addLikelySubtags(locale.data(), likely.data(), static_cast<std::int32_t>(likely.size()) - 1, &error);
    const Buffer& full = U_SUCCESS(error) ? likely : locale;
    const std::string region = partOf(full, uloc_getCountry);
    if (partOf(full, uloc_getScript) == "hant") {
        return region == "hk" || region == "mo" ? region : "tw";
    }
    return region == "sg" ? region : "cn";
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
    if (U_FAILURE(error)) {
        return {};
    }
    const std::string language = partOf(id, uloc_getLanguage);
    const std::string region = language == "zh" ? chineseRegion(id) : partOf(id, uloc_getCountry);
    return region.empty() ? language : language + "-" + region;
}

} // namespace platform
