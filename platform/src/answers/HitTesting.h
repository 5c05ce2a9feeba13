#pragma once

#include <vector>

#include <dwrite.h>

#include "lines/TextPipeline.h"

namespace platform {

// Which text is where in a finished pipeline's layout. Places are relative to the layout's box, y down.

/// The cluster nearest to a point.
struct PointHit {
    DWRITE_HIT_TEST_METRICS metrics{};
    /// The point is nearer to the side on which the cluster's text ends.
    bool isTrailing = false;
    /// The point is within the cluster's box.
    bool isInside = false;
};

PointHit hitTestPoint(const TextPipeline& pipeline, float x, float y);

/// Where a caret stands.
struct Caret {
    /// The top of the caret; it is as high as the line.
    float x = 0.0F;
    float y = 0.0F;
    /// The cluster beside it.
    DWRITE_HIT_TEST_METRICS metrics{};
};

/// The caret before the cluster that holds `position`, or behind it. Positions past the end stand at the end.
Caret hitTestPosition(const TextPipeline& pipeline, UINT32 position, bool isTrailing);

/// The boxes that cover a stretch of text: one for each line and stretch of one direction, from left to right.
/// `originX` and `originY` are added.
std::vector<DWRITE_HIT_TEST_METRICS> hitTestRange(const TextPipeline& pipeline, UINT32 position, UINT32 length,
                                                  float originX, float originY);

} // namespace platform
