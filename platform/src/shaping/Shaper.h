#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include <dwrite.h>
#include <hb.h>

namespace platform {

class CFontFace;

/// What a run's shapes depend on. Sizes are not among it: shaping happens in design units.
struct ShapeRequest {
    /// The whole text: what stands before and after the run decides how letters join.
    std::u16string_view text;
    std::size_t start = 0;
    std::size_t length = 0;
    CFontFace* face = nullptr;
    hb_script_t script = HB_SCRIPT_COMMON;
    /// HB_LANGUAGE_INVALID for none.
    hb_language_t language = HB_LANGUAGE_INVALID;
    bool isRightToLeft = false;
    /// Pairs of letters are kerned. `features` may say otherwise of the same.
    bool isKerned = true;
    std::span<const hb_feature_t> features;
    /// Find isUnsafeToConcat out too, which takes longer.
    bool asksUnsafeToConcat = false;
};

/// One glyph in design units. `advance` and `advanceOffset` point along the run's direction.
struct ShapedGlyph {
    std::uint32_t cluster;
    std::int32_t advance;
    std::int32_t advanceOffset;
    std::int32_t ascenderOffset;
    std::uint16_t glyph;
    /// Breaking the text before this glyph's cluster changes shapes on either side.
    bool isUnsafeToBreak;
    /// Text that is put before or after the run may change this glyph. False unless the request asks.
    bool isUnsafeToConcat;
};

/// A run's glyphs in the order of the text. Clusters are text positions and never decrease.
using ShapedRun = std::vector<ShapedGlyph>;

/// Shapes a run as HarfBuzz does by default, plus `features`. Lone surrogates become the glyph for missing characters.
/// The glyphs replace what `run` holds. Any number of threads may shape at once.
void shape(const ShapeRequest& request, ShapedRun& run);

} // namespace platform
