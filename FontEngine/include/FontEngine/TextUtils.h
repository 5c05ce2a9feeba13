#pragma once

#include <Common/Export.h>
#include <geometry/MbCartPoint.h>
#include <geometry/MbRect.h>
#include <render/RichTextDocument.h>

namespace fonts {

// The point of `rect` that the paragraph's alignment pins (y axis up):
//
//   x: the left edge (Default, Left, Justify and unknown values), the right edge
//      (Right) or the middle between them (Center);
//   y: the top edge, ymax (Default, Top and unknown values), the bottom edge
//      (Bottom) or the middle between them (Middle).
//
// Pure; reads nothing of the paragraph but its two alignments. Never throws. Any
// thread.
FONTENGINE_API MbCartPoint getRectPointToAlignTo(const render::CRichTextParagraph& paragraph, const MbRect& rect);

} // namespace fonts
