#pragma once

#include <limits>

namespace platform {

/// The exact bounds of a glyph's outline in design units, y up. Empty (inverted and
/// infinite, so that a union leaves it out by itself) for a glyph without outline.
struct GlyphBounds {
    float xMin = std::numeric_limits<float>::infinity();
    float yMin = std::numeric_limits<float>::infinity();
    float xMax = -std::numeric_limits<float>::infinity();
    float yMax = -std::numeric_limits<float>::infinity();

    bool empty() const noexcept { return !(xMin <= xMax); }
};

} // namespace platform
