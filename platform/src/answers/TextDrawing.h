#pragma once

#include "lines/TextPipeline.h"

namespace platform {

/// Hands a finished pipeline's text to a renderer, the box's top left corner at `originX`, `originY`: all glyph runs
/// line by line in the order of the text, then inline objects, underlines and strikethroughs. What has no drawing
/// effect of its own gets `effect`. The first failing answer of the renderer ends the drawing and is returned.
HRESULT drawLayout(const TextPipeline& pipeline, void* context, IDWriteTextRenderer& renderer, float originX,
                   float originY, IUnknown* effect = nullptr);

} // namespace platform
