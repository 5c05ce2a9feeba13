#include "MissingCharacters.h"

#include <algorithm>
#include <utility>

namespace fonts {

namespace {

struct PlacedCharacter {
    UINT32 character = 0;
    UINT32 position = 0;
};

std::vector<PlacedCharacter> charactersOf(const WCHAR* text, UINT32 length) {
    constexpr auto isLead = [](UINT32 unit) { return (unit & 0xFFFFFC00U) == 0xD800U; };
    constexpr auto isTrail = [](UINT32 unit) { return (unit & 0xFFFFFC00U) == 0xDC00U; };
    std::vector<PlacedCharacter> characters;
    for (UINT32 i = 0; i < length; ++i) {
        const auto unit = static_cast<UINT32>(text[i]);
        const UINT32 following = i + 1 < length ? static_cast<UINT32>(text[i + 1]) : 0;
        const bool isPair = isLead(unit) && isTrail(following);
        characters.push_back({isPair ? 0x10000U + ((unit & 0x3FFU) << 10) + (following & 0x3FFU) : unit, i});
        i += isPair ? 1U : 0U;
    }
    return characters;
}

} // namespace

void CMissingCharacters::add(const DWRITE_GLYPH_RUN& run, const DWRITE_GLYPH_RUN_DESCRIPTION& description) {
    const UINT16* const glyphs = run.glyphIndices;
    if (std::find(glyphs, glyphs + run.glyphCount, UINT16{0}) == glyphs + run.glyphCount) {
        return;
    }
    for (UINT32 at = 0; at < description.stringLength;) {
        const UINT32 start = at;
        const UINT16 firstGlyph = description.clusterMap[start];
        while (at < description.stringLength && description.clusterMap[at] == firstGlyph) {
            ++at;
        }
        const UINT32 endGlyph = at < description.stringLength ? description.clusterMap[at] : run.glyphCount;
        const auto boxes = std::count(glyphs + firstGlyph, glyphs + endGlyph, UINT16{0});
        if (boxes > 0) {
            addCluster(run.fontFace, description.string + start, at - start, description.textPosition + start,
                       static_cast<std::size_t>(boxes));
        }
    }
}

std::vector<SMissingCharacter> CMissingCharacters::take() {
    std::vector<SMissingCharacter> characters = std::move(m_characters);
    std::sort(characters.begin(), characters.end(),
              [](const SMissingCharacter& a, const SMissingCharacter& b) { return a.position < b.position; });
    return characters;
}

void CMissingCharacters::addCluster(IDWriteFontFace* face, const WCHAR* text, UINT32 length, UINT32 position,
                                    std::size_t boxes) {
    const std::vector<PlacedCharacter> characters = charactersOf(text, length);
    std::vector<UINT32> points(characters.size());
    std::transform(characters.begin(), characters.end(), points.begin(),
                   [](const PlacedCharacter& placed) { return placed.character; });
    std::vector<UINT16> glyphs(points.size());
    if (FAILED(face->GetGlyphIndices(points.data(), static_cast<UINT32>(points.size()), glyphs.data()))) {
        std::fill(glyphs.begin(), glyphs.end(), UINT16{1});
    }
    std::size_t found = 0;
    for (std::size_t i = 0; i < glyphs.size() && found < boxes; ++i) {
        if (glyphs[i] == 0) {
            addCharacter(characters[i].character, position + characters[i].position);
            ++found;
        }
    }
    if (found == 0) {
        addCharacter(characters.front().character, position);
    }
}

void CMissingCharacters::addCharacter(char32_t character, std::uint32_t position) {
    const auto [place, isNew] = m_places.emplace(character, m_characters.size());
    if (isNew) {
        m_characters.push_back({character, position, 0});
    }
    ++m_characters[place->second].count;
}

} // namespace fonts
