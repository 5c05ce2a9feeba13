#pragma once

#include "MbRect.h"
#include "MbRegion.h"
#include <Common/FontEngineExport.h>

#include <boost/smart_ptr/intrusive_ptr.hpp>

namespace aecmath {

/// A new region that covers `rect`: one contour, counterclockwise from the lower left corner (y up). An empty
/// rectangle gives a region without contours.
[[nodiscard]] FONTENGINE_API boost::intrusive_ptr<MbRegion> createRegionByRect(const MbRect& rect);

} // namespace aecmath
