#pragma once

#include <utility>
#include <vector>

#include <FontEngine/ITextMetrics.h>
#include <geometry/MbRect.h>
#include <render/RichTextDocument.h>

// What the layoutings share: paragraphs' rectangles, placed in a box. All
// rectangles have their y axis up. Implemented in TextUtils.cpp, beside
// getRectPointToAlignTo.

namespace fonts {

// Takes `margin` off both sides of `rect` itself and returns a copy of it. A
// margin above half the width leaves xmin above xmax: an empty rectangle.
MbRect insetRectHorizontally(MbRect& rect, double margin);

// One layout box per paragraph, stacked downwards from the top of `box`, each as
// wide as the box.
std::vector<MbRect> getParagraphBoxRects(const ITextMetrics& textMetrics, const render::CRichTextDocument& document,
                                         const MbRect& box);

// One ink box per paragraph, placed in `box`.
std::vector<MbRect> getParagraphInkRects(const ITextMetrics& textMetrics, const render::CRichTextDocument& document,
                                         const MbRect& box);

// Per paragraph the (dx, dy) from the alignment point of its ink rectangle to
// that of its box rectangle. Throws common::ECheckViolation when the two vectors
// differ in length, std::out_of_range when they are shorter than the document.
std::vector<std::pair<double, double>> getAlignmentOffsets(const render::CRichTextDocument& document,
                                                           const std::vector<MbRect>& boxRects,
                                                           const std::vector<MbRect>& inkRects);

} // namespace fonts
