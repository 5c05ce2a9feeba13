#pragma once

#include "shaping/Shaper.h"
#include "shaping/WordStore.h"

namespace platform {

/// The same glyphs as shape() gives, but word by word from `store` where words do not act on each other.
void shapeByWords(const ShapeRequest& request, WordStore& store, ShapedRun& run);

} // namespace platform
