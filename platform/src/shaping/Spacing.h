#pragma once

#include <cstddef>

#include "format/RangeProperties.h"
#include "shaping/ShapedText.h"

namespace platform {

/// Widens the clusters of the items of `shaped` from `firstItem` on as the styles of their first positions say. A
/// cluster without glyphs stays as it is.
void addSpacing(const RangeProperties& styles, std::size_t firstItem, ShapedText& shaped);

} // namespace platform
