#pragma once

#include "Drawing.h"
#include "Geometry.h"
#include "Limits.h"
#include <Common/FontEngineExport.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace dxf {

/// One occurrence of a text in the drawing: a text in a block occurs once for each reference to the block.
struct PlacedText {
    const TextEntity* text = nullptr; ///< Of the drawing, for as long as the visit.
    /// From the text's own coordinates to the world: origin at the insertion point (for one-line texts the point that
    /// the justification names), x along the baseline, y up, lengths in drawing units of the text's `height`. Mirrored
    /// for backward and upside-down texts. The width factor and the oblique angle are not in it.
    Transform frame;
    std::wstring layer;                     ///< After layer "0" inside a block took the reference's.
    int color = 7;                          ///< Colour number 1 to 255, by layer and by block resolved.
    std::optional<std::uint32_t> trueColor; ///< 0xRRGGBB, resolved likewise; holds before `color`.
    bool visible = true;                    ///< Its layer is not off; no layer on the way is frozen, nothing invisible.
    bool paperSpace = false;
    std::size_t depth = 0; ///< Number of references on the way.
};

/// False stops.
using PlacedTextVisitor = std::function<bool(const PlacedText&)>;

/// Where a text stands without any reference around it. Texts of blocks: in the block's coordinates.
FONTENGINE_DXF_API Transform frameOf(const TextEntity& text);

/// Length between the two points of an aligned or fitted one-line text; 0 for all others.
FONTENGINE_DXF_API double fitLength(const TextEntity& text);

/// Gives every occurrence of every text: first the drawing's own in file order, then those inside references in the
/// references' file order, nested ones where they stand. Attribute definitions inside blocks come only where they are
/// constant; dimensions and tables only where no block with texts shows them. References in a circle are left out.
/// Returns the number given. Throws Error for a drawing beyond the limits (PlacementLimit, PlacedLengthLimit,
/// DepthLimit) before it gives the first one; where neither placements nor their characters are limited, at the first
/// reference nested too deep.
FONTENGINE_DXF_API std::size_t placeTexts(const Drawing& drawing, const PlacedTextVisitor& visit,
                                          const Limits& limits = {});

/// Throws what placeTexts would throw, for whoever places nothing but must not write what nobody can place.
FONTENGINE_DXF_API void checkPlacements(const Drawing& drawing, const Limits& limits = {});

} // namespace dxf
