#include "lines/Ink.h"

#include "fonts/FontFace.h"
#include "lines/LinePieces.h"

namespace platform {

namespace {

/// Adds what an inline object, drawn with its box's left side at `left`, says of its ink.
void includeObject(IDWriteInlineObject& object, float left, float baseline, InkBox& ink) {
    DWRITE_INLINE_OBJECT_METRICS metrics{};
    if (FAILED(object.GetMetrics(&metrics))) {
        return;
    }
    // The values count even where the call fails.
    DWRITE_OVERHANG_METRICS overhang{};
    object.GetOverhangMetrics(&overhang);
    const float top = baseline - metrics.baseline;
    ink.include({left - overhang.left, top - overhang.top, left + metrics.width + overhang.right,
                 top + metrics.height + overhang.bottom});
}

/// Adds the ink of a piece of a line.
void includePiece(const TextPipeline& pipeline, std::size_t index, const LinePiece& piece, InkBox& ink) {
    const ShapedText& shaped = pipeline.shaped();
    const TextItem& item = shaped.items[piece.item];
    const Line& line = pipeline.lines()[index];
    const float baseline = pipeline.placement().lines[index].top + line.baseline;
    IDWriteInlineObject* const object = piece.isTrimmed ? pipeline.settings().trimmingSign.get() : item.object;
    if (object != nullptr) {
        includeObject(*object, piece.left, baseline, ink);
    }
    if (piece.isTrimmed || object != nullptr) {
        return;
    }
    const float scale = item.emSize / static_cast<float>(std::max(1U, item.face->unitsPerEm()));
    float x = piece.isRightToLeft() ? piece.left + piece.width : piece.left;
    for (UINT32 i = piece.clusterBegin; i < piece.clusterEnd; ++i) {
        const bool isShown =
            !shaped.clusters[i].has(Cluster::Shapeless) || (line.showsHyphen && i + 1 == line.clusterEnd);
        const float width = placedWidth(pipeline, index, i);
        float pen = x;
        for (UINT32 glyph = shaped.clusters[i].glyphStart; isShown && glyph < shaped.glyphEnd(i); ++glyph) {
            const GlyphBounds& bounds = item.face->glyphBounds(shaped.glyphs[glyph]);
            const DWRITE_GLYPH_OFFSET& offset = shaped.offsets[glyph];
            const float advance = shaped.advances[glyph];
            const float origin =
                piece.isRightToLeft() ? pen - advance - offset.advanceOffset : pen + offset.advanceOffset;
            const float y = baseline - offset.ascenderOffset;
            if (!bounds.empty()) {
                ink.include({origin + bounds.xMin * scale, y - bounds.yMax * scale, origin + bounds.xMax * scale,
                             y - bounds.yMin * scale});
            }
            pen = piece.isRightToLeft() ? pen - advance : pen + advance;
        }
        x = piece.isRightToLeft() ? x - width : x + width;
    }
}

} // namespace

InkBox inkOf(const TextPipeline& pipeline, std::size_t line) {
    InkBox ink;
    std::vector<LinePiece> pieces;
    findPieces(pipeline, line, pieces);
    for (const LinePiece& piece : pieces) {
        includePiece(pipeline, line, piece, ink);
    }
    return ink;
}

std::vector<SideBearings> findSideBearings(const TextPipeline& pipeline) {
    std::vector<SideBearings> bearings(pipeline.lines().size());
    for (std::size_t i = 0; i < bearings.size(); ++i) {
        const InkBox ink = inkOf(pipeline, i);
        const PlacedLine& placed = pipeline.placement().lines[i];
        if (!ink.isEmpty()) {
            bearings[i] = {ink.left - placed.left, placed.left + placed.width - ink.right};
        }
    }
    return bearings;
}

} // namespace platform
