#pragma once

#include <vector>

#include <dxf/Geometry.h>

#include "Outlines.h"

namespace tool {

using Loop = std::vector<MbCartPoint>;

// The closed contours of an outline as chains of straight lines that stay within
// `tolerance` of its curves. Contours without area are left out.
std::vector<Loop> flatten(const Outline& outline, double tolerance);

// Groups the contours of one glyph into areas that show the glyph where every
// other area between contours is filled: overlapping parts come apart, each with
// its own holes.
std::vector<std::vector<Loop>> filledAreas(std::vector<Loop> loops);

} // namespace tool
