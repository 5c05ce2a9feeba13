#pragma once

#include <optional>

#include <d2d1.h>

#include "geometry/CurveBounds.h"

namespace platform {

/// The ellipse piece that an arc segment from `from` describes. Radii too small to reach the end are scaled up until
/// they do. Nothing where the segment is a straight line (a radius of 0, or end = start).
std::optional<EllipticArc> ellipticArc(D2D1_POINT_2F from, const D2D1_ARC_SEGMENT& segment);

} // namespace platform
