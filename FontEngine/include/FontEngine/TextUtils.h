#pragma once

#include <Common/FontEngineExport.h>
#include <FontEngine/ITextMetrics.h>
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

// Whether a rectangle that a layouting gave for `paragraph` while it aligned by ink,
// or for a glyph cluster, says where that stands. A paragraph or cluster without
// ink has no place: nothing is to be drawn for it. (Rectangles that are not aligned
// by ink have one always.)
//
// Where the rectangle alone does not tell, the paragraph's ink is measured: errors
// and thread rule are those of the service.
FONTENGINE_API bool hasPlace(const ITextMetrics& textMetrics, const render::CRichTextParagraph& paragraph,
                             const MbRect& rect);

} // namespace fonts
