#pragma once

#include "geometry/PathData.h"

namespace platform {

/// Adds the curves that a glyph stands for to `path`, as the face draws them. Throws std::bad_alloc without memory.
void appendOutline(const GlyphRecord& glyph, PathData& path);

} // namespace platform
