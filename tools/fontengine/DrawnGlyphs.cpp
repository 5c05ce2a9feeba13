#include "DrawnGlyphs.h"

namespace tool {

namespace {

void append(std::vector<DrawnGlyph>& result, const LaidOutParagraph& paragraph, const PaintedRun& run,
            std::size_t first, std::size_t count) {
    for (std::size_t i = first; i < first + count; ++i) {
        const PaintedGlyph& glyph = run.glyphs.at(i);
        if (glyph.hasInk) {
            result.push_back(
                {run.face, glyph.index, {paragraph.origin.x + glyph.place.x, paragraph.origin.y + glyph.place.y, 0.0}});
        }
    }
}

} // namespace

std::vector<DrawnGlyph> glyphsOf(const LaidOutParagraph& paragraph, const LaidOutCluster& cluster) {
    std::vector<DrawnGlyph> result;
    append(result, paragraph, paragraph.painted.runs.at(cluster.run), cluster.firstGlyph, cluster.glyphCount);
    return result;
}

std::vector<DrawnGlyph> glyphsOf(const LaidOutText& text) {
    std::vector<DrawnGlyph> result;
    for (const LaidOutParagraph& paragraph : text.paragraphs) {
        for (const PaintedRun& run : paragraph.painted.runs) {
            append(result, paragraph, run, 0, run.glyphs.size());
        }
    }
    for (DrawnGlyph& glyph : result) {
        glyph.place = text.toDrawing.apply(glyph.place);
    }
    return result;
}

} // namespace tool
