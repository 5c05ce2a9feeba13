#pragma once

#include "fonts/FaceTraits.h"

#include <cstdint>

namespace platform {

/// Brings values that callers may pass out of range into it: weight 1 to 999, stretch 1
/// to 9 (anything below is normal), an unknown style is normal.
FaceTraits normalizedRequest(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch, DWRITE_FONT_STYLE style);

/// How far a font is from a normalised request: 0 is exact, less is closer. Stretch
/// decides before style, style before weight, each by the rules style sheets use:
/// a request up to normal looks to the narrower and lighter side first, one beyond it
/// to the other side, and 400 and 500 stand in for each other.
std::uint32_t matchDistance(const FaceTraits& request, const FaceTraits& font);

} // namespace platform
