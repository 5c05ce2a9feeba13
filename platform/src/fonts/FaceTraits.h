#pragma once

#include <dwrite_types.h>

namespace platform {

/// What tells the fonts of one family apart.
struct FaceTraits {
    DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL;
    DWRITE_FONT_STRETCH stretch = DWRITE_FONT_STRETCH_NORMAL;
    DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL;
};

} // namespace platform
