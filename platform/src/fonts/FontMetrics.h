#pragma once

#include "fonts/HarfBuzz.h"

#include <dwrite_types.h>

namespace platform {

/// The metrics of a font whose scale is its units per em, without simulations (which
/// change none of them), adjusted to the font's variations.
DWRITE_FONT_METRICS readFontMetrics(hb_font_t* font);

} // namespace platform
