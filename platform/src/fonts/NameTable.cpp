#include "fonts/NameTable.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

namespace {

constexpr std::wstring_view englishUnitedStates = L"en-us";

/// HarfBuzz names the languages of a name table without the region that the table's
/// language codes imply ("ja" for Japanese of Japan): the likely region completes them.
std::wstring completeLocale(const char* languageTag) {
    UErrorCode status = U_ZERO_ERROR;
    char locale[ULOC_FULLNAME_CAPACITY];
    char likely[ULOC_FULLNAME_CAPACITY];
    char region[ULOC_COUNTRY_CAPACITY];
    uloc_forLanguageTag(languageTag, locale, sizeof locale, nullptr, &status);
    const bool hasRegion = uloc_getCountry(locale, region, sizeof region, &status) > 0;
    if (!hasRegion) {
        uloc_addLikelySubtags(locale, likely, sizeof likely, &status);
        uloc_getCountry(likely, region, sizeof region, &status);
    }

    std::string name = languageTag;
    if (U_SUCCESS(status) && !hasRegion && region[0] != '\0') {
        name += '-';
        name += region;
    }
    std::wstring lowered;
    for (const char c : name) {
        lowered += static_cast<wchar_t>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    }
    return lowered;
}

/// The locale name of a language; each is worked out once, for a few dozen exist.
const std::wstring& localeOf(hb_language_t language) {
    static std::mutex guard;
    static auto& known = *new std::map<hb_language_t, std::wstring>;
    const std::lock_guard lock(guard);
    const auto found = known.find(language);
    if (found != known.end()) {
        return found->second;
    }
    const char* const tag = hb_language_to_string(language);
    std::wstring locale = std::string_view(tag) == "en" ? std::wstring(englishUnitedStates) : completeLocale(tag);
    return known.emplace(language, std::move(locale)).first->second;
}

std::wstring readText(hb_face_t* face, hb_ot_name_id_t id, hb_language_t language) {
    unsigned length = hb_ot_name_get_utf16(face, id, language, nullptr, nullptr);
    std::vector<std::uint16_t> units(length + 1);
    unsigned size = length + 1;
    hb_ot_name_get_utf16(face, id, language, &size, units.data());
    return {units.begin(), units.begin() + static_cast<std::ptrdiff_t>(std::min(size, length))};
}

} // namespace

LocalizedNames readNames(hb_face_t* face, hb_ot_name_id_t id) {
    LocalizedNames names;
    unsigned count = 0;
    const hb_ot_name_entry_t* const entries = hb_ot_name_list_names(face, &count);
    for (unsigned i = 0; i < count; ++i) {
        if (entries[i].name_id != id || entries[i].language == HB_LANGUAGE_INVALID) {
            continue;
        }
        std::wstring text = readText(face, id, entries[i].language);
        const std::wstring& locale = localeOf(entries[i].language);
        const bool known =
            std::any_of(names.begin(), names.end(), [&](const LocalizedName& name) { return name.locale == locale; });
        if (!text.empty() && !known) {
            names.push_back({locale, std::move(text)});
        }
    }
    std::stable_partition(names.begin(), names.end(),
                          [](const LocalizedName& name) { return name.locale == englishUnitedStates; });
    return names;
}

const std::wstring* preferredName(const LocalizedNames& names) {
    return names.empty() ? nullptr : &names.front().text;
}

} // namespace platform
