#include "lines/LinePieces.h"

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

void addPiece(const TextPipeline& pipeline, std::size_t index, LinePiece piece, std::vector<LinePiece>& pieces) {
    if (piece.clusterBegin >= piece.clusterEnd) {
        return;
    }
    for (UINT32 i = piece.clusterBegin; i < piece.clusterEnd; ++i) {
        piece.width += placedWidth(pipeline, index, i);
    }
    pieces.push_back(piece);
}

/// Adds a piece whose end may be the neutral end of its line.
void addWithNeutralEnd(const TextPipeline& pipeline, std::size_t index, LinePiece piece, UINT32 neutralEnd,
                       std::vector<LinePiece>& pieces) {
    const std::uint8_t base = paragraphLevel(pipeline.settings().rightToLeft());
    if (piece.level == base || neutralEnd >= piece.clusterEnd) {
        addPiece(pipeline, index, piece, pieces);
        return;
    }
    LinePiece neutral = piece;
    neutral.clusterBegin = std::max(piece.clusterBegin, neutralEnd);
    neutral.level = base;
    piece.clusterEnd = neutral.clusterBegin;
    addPiece(pipeline, index, piece, pieces);
    addPiece(pipeline, index, neutral, pieces);
}

void arrange(const TextPipeline& pipeline, std::size_t index, std::vector<LinePiece>& pieces) {
    const Line& line = pipeline.lines()[index];
    std::vector<std::uint8_t> levels;
    levels.reserve(pieces.size());
    for (const LinePiece& piece : pieces) {
        levels.push_back(piece.level);
    }
    std::vector<std::int32_t> order;
    findVisualOrder(levels, order);
    const PlacedLine& placed = pipeline.placement().lines[index];
    float x = placed.left - placed.bearing;
    if (pipeline.settings().rightToLeft()) {
        x -= line.fullWidth - line.width;
    }
    for (const std::int32_t next : order) {
        LinePiece& piece = pieces[static_cast<std::size_t>(next)];
        piece.left = x;
        x += piece.width;
    }
}

} // namespace

float placedWidth(const TextPipeline& pipeline, std::size_t line, UINT32 cluster) {
    const ShapedText& shaped = pipeline.shaped();
    const PlacedLine& placed = pipeline.placement().lines[line];
    const Line& broken = pipeline.lines()[line];
    if (broken.isTrimmed && cluster >= broken.trimBegin && cluster < broken.trimEnd) {
        return cluster == broken.trimBegin ? broken.signWidth : 0.0F;
    }
    const float width = shaped.clusters[cluster].width;
    if (placed.gap == 0.0F) {
        return width;
    }
    return width + stretchOf(pipeline.text().units(), shaped, broken, placed, cluster);
}

void findPieces(const TextPipeline& pipeline, std::size_t index, std::vector<LinePiece>& pieces) {
    pieces.clear();
    const ShapedText& shaped = pipeline.shaped();
    const Line& line = pipeline.lines()[index];
    if (line.clusterBegin == line.clusterEnd) {
        return;
    }
    const UINT32 neutralEnd = findNeutralEnd(shaped, line);
    for (UINT32 i = shaped.itemOf(line.clusterBegin);
         i < shaped.items.size() && shaped.items[i].clusterBegin < line.clusterEnd; ++i) {
        const TextItem& item = shaped.items[i];
        LinePiece piece;
        piece.item = i;
        piece.clusterBegin = std::max(item.clusterBegin, line.clusterBegin);
        piece.clusterEnd = std::min(item.clusterEnd, line.clusterEnd);
        piece.level = item.bidiLevel;
        if (!line.isTrimmed || piece.clusterEnd <= line.trimBegin || piece.clusterBegin >= line.trimEnd) {
            addWithNeutralEnd(pipeline, index, piece, neutralEnd, pieces);
            continue;
        }
        LinePiece before = piece;
        before.clusterEnd = line.trimBegin;
        addWithNeutralEnd(pipeline, index, before, neutralEnd, pieces);
        if (piece.clusterBegin <= line.trimBegin) {
            LinePiece sign = piece;
            sign.clusterBegin = line.trimBegin;
            sign.clusterEnd = line.trimEnd;
            sign.level = paragraphLevel(pipeline.settings().rightToLeft());
            sign.isTrimmed = true;
            addPiece(pipeline, index, sign, pieces);
        }
        LinePiece after = piece;
        after.clusterBegin = line.trimEnd;
        addWithNeutralEnd(pipeline, index, after, neutralEnd, pieces);
    }
    arrange(pipeline, index, pieces);
}

} // namespace platform
