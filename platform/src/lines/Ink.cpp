#include "lines/Ink.h"

#include "fonts/FontFace.h"
#include "lines/ItemPieces.h"

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
void includePiece(const LaidOutText& laidOut, std::size_t index, const ItemPiece& piece, InkBox& ink) {
    const ShapedText& shaped = laidOut.shaped();
    const TextItem& item = shaped.items[piece.item];
    const Line& line = laidOut.lines[index];
    const float baseline = laidOut.placement.lines[index].top + line.baseline;
    IDWriteInlineObject* const object = piece.isTrimmed ? laidOut.settings().trimmingSign.get() : item.inlineObject();
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
        const float width = placedWidth(laidOut, index, i);
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

InkBox inkOf(const LaidOutText& laidOut, std::size_t line) {
    InkBox ink;
    std::vector<ItemPiece> pieces;
    findPieces(laidOut, line, pieces);
    for (const ItemPiece& piece : pieces) {
        includePiece(laidOut, line, piece, ink);
    }
    return ink;
}

std::vector<SideBearings> findSideBearings(const LaidOutText& laidOut) {
    std::vector<SideBearings> bearings(laidOut.lines.size());
    for (std::size_t i = 0; i < bearings.size(); ++i) {
        const InkBox ink = inkOf(laidOut, i);
        const PlacedLine& placed = laidOut.placement.lines[i];
        if (!ink.isEmpty()) {
            bearings[i] = {ink.left - placed.left, placed.left + placed.width - ink.right};
        }
    }
    return bearings;
}

} // namespace platform
