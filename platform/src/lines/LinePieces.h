#pragma once

#include <vector>

#include "lines/TextPipeline.h"

namespace platform {

/// A part of an item on one line, all of it at one bidi level, and so side by side.
struct LinePiece {
    UINT32 item = 0;
    UINT32 clusterBegin = 0;
    UINT32 clusterEnd = 0;
    std::uint8_t level = 0;
    /// The clusters are trimmed away; the trimming sign stands in their place.
    bool isTrimmed = false;
    /// Relative to the layout's box.
    float left = 0.0F;
    float width = 0.0F;

    [[nodiscard]] bool isRightToLeft() const noexcept { return (level & 1) != 0; }
};

/// The pieces of line `index`, in the order of the text, with their places.
///
/// Whitespace at the line's end is at the paragraph's level, whatever surrounds it, and hangs over the end that lines
/// of the paragraph have.
void findPieces(const TextPipeline& pipeline, std::size_t index, std::vector<LinePiece>& pieces);

/// The width of a cluster as it stands on its line: stretched if the line is, that of the trimming sign for the first
/// of the clusters that it stands for, and none for the others.
float placedWidth(const TextPipeline& pipeline, std::size_t line, UINT32 cluster);

} // namespace platform
