#include <FontEngine/TextUtils.h>

#include <cmath>
#include <stdexcept>

#include <Common/Guards.h>

#include "ParagraphPlacement.h"

namespace fonts {

namespace {

const MbRect& rectAt(const std::vector<MbRect>& rects, int32_t index) {
    if (static_cast<size_t>(index) >= rects.size())
        throw std::out_of_range("invalid vector subscript");
    return rects[static_cast<size_t>(index)];
}

// Edges that come from the empty rectangle lie at its extent, wherever that was moved.
bool isFarAway(double edge) {
    return !(std::abs(edge) < MbRect::emptyExtent / 2.0);
}

} // namespace

MbCartPoint getRectPointToAlignTo(const render::CRichTextParagraph& paragraph, const MbRect& rect) {
    double x = rect.xmin;
    switch (paragraph.alignment) {
    case render::eRichTextParagraphAlignment::Right:
        x = rect.xmax;
        break;
    case render::eRichTextParagraphAlignment::Center:
        x = rect.xmin + (rect.xmax - rect.xmin) * 0.5;
        break;
    default:
        break;
    }

    double y = rect.ymax;
    switch (paragraph.verticalAlignment) {
    case render::eRichTextParagraphVerticalAlignment::Middle:
        y = rect.ymax - (rect.ymax - rect.ymin) * 0.5;
        break;
    case render::eRichTextParagraphVerticalAlignment::Bottom:
        y = rect.ymin;
        break;
    default:
        break;
    }
    return {x, y};
}

bool hasPlace(const ITextMetrics& textMetrics, const render::CRichTextParagraph& paragraph, const MbRect& rect) {
    if (isFarAway(rect.xmin) || isFarAway(rect.xmax) || isFarAway(rect.ymin) || isFarAway(rect.ymax))
        return false;
    // A centred or middle paragraph without ink stands around the middle of the empty rectangle, which is 0.
    return !textMetrics.getDocumentGeometryRect(render::makeDocument({paragraph}), 0.0, 0.0).isEmpty();
}

MbRect insetRectHorizontally(MbRect& rect, double margin) {
    rect.xmin += margin;
    rect.xmax -= margin;
    return rect;
}

std::vector<MbRect> getParagraphBoxRects(const ITextMetrics& textMetrics, const render::CRichTextDocument& document,
                                         const MbRect& box) {
    std::vector<MbRect> rects = textMetrics.getParagraphRects(document, box.xmax - box.xmin, box.ymax - box.ymin);
    for (MbRect& rect : rects) {
        rect.Move(0.0, box.ymax);
        rect.xmin = box.xmin;
        rect.xmax = box.xmax;
    }
    return rects;
}

std::vector<MbRect> getParagraphInkRects(const ITextMetrics& textMetrics, const render::CRichTextDocument& document,
                                         const MbRect& box) {
    std::vector<MbRect> rects =
        textMetrics.getParagraphGeometryRects(document, box.xmax - box.xmin, box.ymax - box.ymin);
    for (MbRect& rect : rects)
        rect.Move(box.xmin, box.ymax);
    return rects;
}

std::vector<std::pair<double, double>> getAlignmentOffsets(const render::CRichTextDocument& document,
                                                           const std::vector<MbRect>& boxRects,
                                                           const std::vector<MbRect>& inkRects) {
    COMMON_CHECK(boxRects.size() == inkRects.size());
    const auto count = static_cast<int32_t>(document.paragraphs.size());
    std::vector<std::pair<double, double>> offsets;
    offsets.reserve(boxRects.size());
    for (int32_t i = 0; i < count; ++i) {
        const render::CRichTextParagraph& paragraph = document.paragraphs.at(i);
        const MbCartPoint boxPoint = getRectPointToAlignTo(paragraph, rectAt(boxRects, i));
        const MbCartPoint inkPoint = getRectPointToAlignTo(paragraph, rectAt(inkRects, i));
        offsets.emplace_back(boxPoint.x - inkPoint.x, boxPoint.y - inkPoint.y);
    }
    return offsets;
}

} // namespace fonts
