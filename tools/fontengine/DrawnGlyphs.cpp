#include "DrawnGlyphs.h"

#include <span>

namespace tool {

namespace {

void append(std::vector<DrawnGlyph>& result, const LaidOutParagraph& paragraph, std::span<const fonts::SGlyph> glyphs,
            std::uint32_t face) {
    for (const fonts::SGlyph& glyph : glyphs) {
        if (glyph.hasInk) {
            const MbCartPoint place = paragraph.toText(glyph.origin);
            result.push_back({face, glyph.id, {place.x, place.y, 0.0}});
        }
    }
}

} // namespace

std::vector<DrawnGlyph> glyphsOf(const LaidOutParagraph& paragraph, const LaidOutCluster& cluster,
                                 const std::vector<std::uint32_t>& faces) {
    std::vector<DrawnGlyph> result;
    const fonts::CParagraphLayout& layout = paragraph.layout;
    const fonts::SCluster& drawn = layout.clusters()[cluster.index];
    append(result, paragraph, layout.glyphs().subspan(drawn.firstGlyph, drawn.glyphCount),
           faces.at(layout.runs()[drawn.run].face));
    return result;
}

std::vector<DrawnGlyph> glyphsOf(const LaidOutText& text, FaceNumbers& faces) {
    std::vector<DrawnGlyph> result;
    for (const LaidOutParagraph& paragraph : text.paragraphs) {
        const std::vector<std::uint32_t> numbers = faces.of(paragraph.layout);
        for (const fonts::SRun& run : paragraph.layout.runs()) {
            append(result, paragraph, paragraph.layout.glyphs(run), numbers.at(run.face));
        }
    }
    for (DrawnGlyph& glyph : result) {
        glyph.place = text.toDrawing.apply(glyph.place);
    }
    return result;
}

} // namespace tool
