#include "lines/ItemPieces.h"

#include <algorithm>
#include <cstdint>

#include "unicode/BidiLevels.h"

namespace platform {

namespace {

/// Where the end of the line begins that is put at the paragraph's level: whitespace and what has no shape.
UINT32 findNeutralEnd(const ShapedText& shaped, const Line& line) {
    UINT32 end = line.trailingBegin;
    while (end > line.clusterBegin &&
           (shaped.clusters[end - 1].has(Cluster::Whitespace) || shaped.clusters[end - 1].has(Cluster::Shapeless)) &&
           !(line.showsHyphen && end == line.clusterEnd)) {
        --end;
    }
    return end;
}

void addPiece(const LaidOutText& laidOut, std::size_t index, ItemPiece piece, std::vector<ItemPiece>& pieces) {
    if (piece.clusterBegin >= piece.clusterEnd) {
        return;
    }
    for (UINT32 i = piece.clusterBegin; i < piece.clusterEnd; ++i) {
        piece.width += placedWidth(laidOut, index, i);
    }
    pieces.push_back(piece);
}

/// Adds a piece whose end may be the neutral end of its line.
void addWithNeutralEnd(const LaidOutText& laidOut, std::size_t index, ItemPiece piece, UINT32 neutralEnd,
                       std::vector<ItemPiece>& pieces) {
    const std::uint8_t base = paragraphLevel(laidOut.settings().rightToLeft());
    if (piece.level == base || neutralEnd >= piece.clusterEnd) {
        addPiece(laidOut, index, piece, pieces);
        return;
    }
    ItemPiece neutral = piece;
    neutral.clusterBegin = std::max(piece.clusterBegin, neutralEnd);
    neutral.level = base;
    piece.clusterEnd = neutral.clusterBegin;
    addPiece(laidOut, index, piece, pieces);
    addPiece(laidOut, index, neutral, pieces);
}

void arrange(const LaidOutText& laidOut, std::size_t index, std::vector<ItemPiece>& pieces) {
    const Line& line = laidOut.lines[index];
    std::vector<std::uint8_t> levels;
    levels.reserve(pieces.size());
    for (const ItemPiece& piece : pieces) {
        levels.push_back(piece.level);
    }
    std::vector<std::int32_t> order;
    findVisualOrder(levels, order);
    const PlacedLine& placed = laidOut.placement.lines[index];
    float x = placed.left - placed.bearing;
    if (laidOut.settings().rightToLeft()) {
        x -= line.fullWidth - line.width;
    }
    for (const std::int32_t next : order) {
        ItemPiece& piece = pieces[static_cast<std::size_t>(next)];
        piece.left = x;
        x += piece.width;
    }
}

} // namespace

float placedWidth(const LaidOutText& laidOut, std::size_t line, UINT32 cluster) {
    const ShapedText& shaped = laidOut.shaped();
    const PlacedLine& placed = laidOut.placement.lines[line];
    const Line& broken = laidOut.lines[line];
    if (broken.isTrimmed && cluster >= broken.trimBegin && cluster < broken.trimEnd) {
        return cluster == broken.trimBegin ? broken.signWidth : 0.0F;
    }
    const float width = shaped.clusters[cluster].width;
    if (placed.gap == 0.0F) {
        return width;
    }
    return width + stretchOf(laidOut.text().units(), shaped, broken, placed, cluster);
}

void findPieces(const LaidOutText& laidOut, std::size_t index, std::vector<ItemPiece>& pieces) {
    pieces.clear();
    const ShapedText& shaped = laidOut.shaped();
    const Line& line = laidOut.lines[index];
    if (line.clusterBegin == line.clusterEnd) {
        return;
    }
    const UINT32 neutralEnd = findNeutralEnd(shaped, line);
    for (UINT32 i = shaped.itemOf(line.clusterBegin);
         i < shaped.items.size() && shaped.items[i].clusterBegin < line.clusterEnd; ++i) {
        const TextItem& item = shaped.items[i];
        ItemPiece piece;
        piece.item = i;
        piece.clusterBegin = std::max(item.clusterBegin, line.clusterBegin);
        piece.clusterEnd = std::min(item.clusterEnd, line.clusterEnd);
        piece.level = item.bidiLevel;
        if (!line.isTrimmed || piece.clusterEnd <= line.trimBegin || piece.clusterBegin >= line.trimEnd) {
            addWithNeutralEnd(laidOut, index, piece, neutralEnd, pieces);
            continue;
        }
        ItemPiece before = piece;
        before.clusterEnd = line.trimBegin;
        addWithNeutralEnd(laidOut, index, before, neutralEnd, pieces);
        if (piece.clusterBegin <= line.trimBegin) {
            ItemPiece sign = piece;
            sign.clusterBegin = line.trimBegin;
            sign.clusterEnd = line.trimEnd;
            sign.level = paragraphLevel(laidOut.settings().rightToLeft());
            sign.isTrimmed = true;
            addPiece(laidOut, index, sign, pieces);
        }
        ItemPiece after = piece;
        after.clusterBegin = line.trimEnd;
        addWithNeutralEnd(laidOut, index, after, neutralEnd, pieces);
    }
    arrange(laidOut, index, pieces);
}

} // namespace platform
