#include "fallback/FallbackCluster.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/utf16.h>

namespace platform {

namespace {

using Characters = boost::container::small_vector<char32_t, 8>;

bool isVariationSelector(char32_t c) {
    return (c >= 0xFE00 && c <= 0xFE0F) || (c >= 0xE0100 && c <= 0xE01EF);
}

/// An emoji right before the selector that asks for its colour form; in a sequence one such speaks for all.
bool asksForEmoji(const Characters& characters) {
    constexpr char32_t emojiSelector = 0xFE0F;
    const auto asked = std::adjacent_find(characters.begin(), characters.end(), [](char32_t c, char32_t next) {
        return next == emojiSelector && u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_EMOJI) != 0;
    });
    return asked != characters.end();
}

Characters charactersOf(std::u16string_view units) {
    Characters characters;
    for (std::size_t at = 0; at < units.size();) {
        UChar32 c = 0;
        U16_NEXT(units.data(), at, units.size(), c);
        characters.push_back(static_cast<char32_t>(c));
    }
    return characters;
}

void dropRiders(Characters& characters) {
    characters.erase(std::remove_if(characters.begin(), characters.end(), isRider), characters.end());
}

/// Hangul fillers stand for a letter that is not there: fonts have them as blanks of its width, and shapers draw them,
/// although Unicode counts them among what may be ignored.
constexpr bool isHangulFiller(char32_t c) {
    return c == 0x115F || c == 0x1160 || c == 0x3164 || c == 0xFFA0;
}

} // namespace

bool isRider(char32_t character) {
    const auto c = static_cast<UChar32>(character);
    switch (u_charType(c)) {
    case U_CONTROL_CHAR:
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
        return true;
    default:
        return u_hasBinaryProperty(c, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0 && !isHangulFiller(character);
    }
}

UScriptCode scriptOf(char32_t character) {
    UErrorCode error = U_ZERO_ERROR;
    return uscript_getScript(static_cast<UChar32>(character), &error);
}

bool isCommon(char32_t character) {
    const UScriptCode script = scriptOf(character);
    return script == USCRIPT_COMMON || script == USCRIPT_INHERITED;
}

FallbackCluster fallbackCluster(std::u16string_view text, std::size_t start, std::size_t end) {
    FallbackCluster cluster;
    cluster.units = text.substr(start, end - start);
    cluster.characters = charactersOf(cluster.units);
    const char32_t first = cluster.characters.front();
    if (U_IS_SURROGATE(first)) {
        cluster.kind = FallbackCluster::Kind::LoneSurrogate;
    } else if (isVariationSelector(first)) {
        cluster.kind = FallbackCluster::Kind::Selector;
    }
    cluster.wantsEmoji = asksForEmoji(cluster.characters);
    dropRiders(cluster.characters);
    if (cluster.kind == FallbackCluster::Kind::Text && cluster.characters.empty()) {
        cluster.kind = FallbackCluster::Kind::Rider;
    }
    return cluster;
}

boost::container::small_vector<char32_t, 8> composed(std::u16string_view units) {
    UErrorCode error = U_ZERO_ERROR;
    const UNormalizer2* const composer = unorm2_getNFCInstance(&error);
    std::array<char16_t, 64> buffer{};
    const std::int32_t length = unorm2_normalize(composer, units.data(), static_cast<std::int32_t>(units.size()),
                                                 buffer.data(), static_cast<std::int32_t>(buffer.size()), &error);
    Characters characters;
    if (U_SUCCESS(error)) {
        characters = charactersOf({buffer.data(), static_cast<std::size_t>(length)});
        dropRiders(characters);
    }
    return characters;
}

} // namespace platform
