#include "MissingCharacters.h"

#include <algorithm>

namespace tool {

namespace {

std::vector<UINT32> codePointsOf(const WCHAR* text, UINT32 length) {
    constexpr auto isLead = [](UINT32 unit) { return (unit & 0xFFFFFC00U) == 0xD800U; };
    constexpr auto isTrail = [](UINT32 unit) { return (unit & 0xFFFFFC00U) == 0xDC00U; };
    std::vector<UINT32> points;
    for (UINT32 i = 0; i < length; ++i) {
        const auto unit = static_cast<UINT32>(text[i]);
        const UINT32 following = i + 1 < length ? static_cast<UINT32>(text[i + 1]) : 0;
        const bool pair = isLead(unit) && isTrail(following);
        points.push_back(pair ? 0x10000U + ((unit & 0x3FFU) << 10) + (following & 0x3FFU) : unit);
        i += pair ? 1U : 0U;
    }
    return points;
}

// Of a cluster, as many characters as it has boxes: those that the font lacks. Where
// it has them all, as with parts that it cannot put together, the first.
void appendMissing(std::vector<char32_t>& missing, IDWriteFontFace* face, const std::vector<UINT32>& cluster,
                   std::size_t boxes) {
    std::vector<UINT16> glyphs(cluster.size());
    if (FAILED(face->GetGlyphIndices(cluster.data(), static_cast<UINT32>(cluster.size()), glyphs.data()))) {
        return;
    }
    const std::size_t before = missing.size();
    for (std::size_t i = 0; i < cluster.size() && missing.size() < before + boxes; ++i) {
        if (glyphs[i] == 0) {
            missing.push_back(cluster[i]);
        }
    }
    if (missing.size() == before) {
        missing.push_back(cluster.front());
    }
}

} // namespace

void appendMissing(std::vector<char32_t>& missing, const DWRITE_GLYPH_RUN& run,
                   const DWRITE_GLYPH_RUN_DESCRIPTION& description) {
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
            appendMissing(missing, run.fontFace, codePointsOf(description.string + start, at - start),
                          static_cast<std::size_t>(boxes));
        }
    }
}

} // namespace tool
