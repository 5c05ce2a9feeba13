#pragma once

#include <vector>

#include "answers/Renderer.h"
#include "shaping/ShapedText.h"

namespace platform {

/// A stretch of a line to be underlined or struck through.
struct DecoratedStretch {
    const TextItem* item = nullptr;
    IUnknown* effect = nullptr;
    bool isRightToLeft = false;
    float left = 0.0F;
    float width = 0.0F;
    /// The baseline, where the renderer wants it.
    float baseline = 0.0F;
};

/// Draws the underlines of one line: one bar through stretches that touch, whatever their fonts and sizes, as thick and
/// as low as their fonts say on average, weighted by width.
HRESULT drawUnderlines(std::vector<DecoratedStretch>& stretches, DWRITE_FLOW_DIRECTION flow, const Renderer& renderer);

/// Draws the strikethroughs of one line: stretches that touch share a bar if they share a font and a size.
HRESULT drawStrikethroughs(std::vector<DecoratedStretch>& stretches, DWRITE_FLOW_DIRECTION flow,
                           const Renderer& renderer);

} // namespace platform
