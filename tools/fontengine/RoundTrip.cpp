#include "RoundTrip.h"

#include <set>
#include <utility>

#include "DrawingLayout.h"
#include "Progress.h"
#include "TextDocument.h"

namespace tool {

namespace {

using TextName = std::pair<std::uint64_t, std::wstring>; // handle and content

std::multiset<TextName> keptTexts(const dxf::Drawing& original, const Exploder& exploder) {
    std::multiset<TextName> kept;
    for (const dxf::TextEntity& text : original.texts) {
        if (text.kind == dxf::TextKind::MText && !exploder.exploded().contains(text.ordinal)) {
            kept.emplace(text.handle, text.content);
        }
    }
    return kept;
}

} // namespace

RoundTrip checkRoundTrip(Session& session, const std::string& path, const dxf::Drawing& original,
                         const Exploder& exploder) {
    const std::vector<ExpectedGlyph>& expected = exploder.expected();
    std::multiset<TextName> kept = keptTexts(original, exploder);
    const dxf::Drawing drawing = readDrawingFile(path);
    FontMap fontMap(session.engine()); // the pieces name installed families
    RoundTrip result;
    Progress progress("Checking " + path + ", texts");
    std::size_t done = 0;
    for (const dxf::TextEntity& text : drawing.texts) {
        progress.update(++done, drawing.texts.size());
        if (text.kind != dxf::TextKind::MText) {
            continue;
        }
        if (const auto same = kept.find({text.handle, text.content}); same != kept.end()) {
            kept.erase(same);
            continue;
        }
        dxf::PlacedText placed;
        placed.text = &text;
        placed.frame = dxf::frameOf(text);
        for (const DrawnGlyph& glyph :
             glyphsOf(layOutText(session, placed, makeTextDocument(drawing, placed, fontMap), {}))) {
            const std::size_t i = result.glyphs++;
            if (i >= expected.size() || !glyph.looksLike(expected[i].glyph)) {
                ++result.different;
                continue;
            }
            const double deviation = dxf::length(glyph.place - expected[i].glyph.place) / expected[i].capHeight;
            if (!(deviation <= result.largestDeviation)) {
                result.largestDeviation = deviation;
                result.line = expected[i].line;
            }
        }
    }
    if (result.glyphs < expected.size()) {
        result.different += expected.size() - result.glyphs;
    }
    return result;
}

} // namespace tool
