#pragma once

#include <dwrite.h>

#include <FontEngine/ParagraphLayout.h>
#include <oslayer/com_ptr.h>

namespace fonts {

// What the platform says of a face: its names as far as the system's collection has it, its file where it comes from
// one, its metrics. Throws oslayer::EOsLayerError when the platform fails.
SFontFace describeFace(const oslayer::com_ptr<IDWriteFontFace>& pFace);

} // namespace fonts
