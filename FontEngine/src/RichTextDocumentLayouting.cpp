#include "RichTextDocumentLayouting.h"

#include <Common/Guards.h>

#include "ParagraphPlacement.h"

namespace fonts {

using render::eRichTextParagraphAlignment;

namespace {

bool isPinnedLeft(const render::CRichTextParagraph& paragraph) {
    return paragraph.alignment == eRichTextParagraphAlignment::Left ||
           paragraph.alignment == eRichTextParagraphAlignment::Justify;
}

bool isPinnedRight(const render::CRichTextParagraph& paragraph) {
    return paragraph.alignment == eRichTextParagraphAlignment::Right;
}

} // namespace

CRichTextDocumentLayouting::CRichTextDocumentLayouting(const render::CRichTextDocument& document,
                                                       const ITextMetrics* textMetrics)
    : m_document(document), m_textMetrics(textMetrics) {}

void CRichTextDocumentLayouting::setLayoutRect(const MbRect& layoutRect) {
    m_layoutRect = layoutRect;
}

void CRichTextDocumentLayouting::setHorizontalMargin(float horizontalMargin) {
    m_horizontalMargin = horizontalMargin;
}

void CRichTextDocumentLayouting::setAlignByTextBounds(bool alignByTextBounds) {
    m_alignByTextBounds = alignByTextBounds;
}

std::vector<MbRect> CRichTextDocumentLayouting::getRects() const {
    return m_rects;
}

std::vector<render::CRichTextParagraph> CRichTextDocumentLayouting::getParagraphs() const {
    const auto count = static_cast<int32_t>(m_document.paragraphs.size());
    std::vector<render::CRichTextParagraph> paragraphs;
    paragraphs.reserve(m_document.paragraphs.size());
    for (int32_t i = 0; i < count; ++i)
        paragraphs.push_back(m_document.paragraphs.at(i));
    return paragraphs;
}

std::vector<boost::intrusive_ptr<MbRegion>> CRichTextDocumentLayouting::getRegions() const {
    return {};
}

const render::CRichTextParagraph& CRichTextDocumentLayouting::paragraphAt(size_t index) const {
    return m_document.paragraphs.at(static_cast<int32_t>(index));
}

// Gives all paragraphs pinned to one edge a common dx, so that the edge stays
// straight: as far inwards as the ink that sticks out furthest there needs, and
// never outwards.
void CRichTextDocumentLayouting::unifyEdgeOffsets(std::vector<std::pair<double, double>>& offsets) const {
    double leftShift = 0.0;
    double rightShift = 0.0;
    for (size_t i = 0; i < offsets.size(); ++i) {
        const render::CRichTextParagraph& paragraph = paragraphAt(i);
        const double dx = offsets[i].first;
        if (isPinnedLeft(paragraph) && dx > leftShift)
            leftShift = dx;
        else if (isPinnedRight(paragraph) && dx < rightShift)
            rightShift = dx;
    }
    for (size_t i = 0; i < offsets.size(); ++i) {
        const render::CRichTextParagraph& paragraph = paragraphAt(i);
        if (isPinnedLeft(paragraph))
            offsets[i].first = leftShift;
        else if (isPinnedRight(paragraph))
            offsets[i].first = rightShift;
    }
}

// A justified paragraph has both edges of its ink pinned, so its width makes up
// for the distance of the ink from them; the others keep the box's width.
std::vector<float>
CRichTextDocumentLayouting::computeParagraphWidths(const std::vector<MbRect>& boxRects,
                                                   const std::vector<MbRect>& inkRects,
                                                   const std::vector<std::pair<double, double>>& offsets) const {
    const size_t count = m_document.paragraphs.size();
    COMMON_CHECK(boxRects.size() == count);
    COMMON_CHECK(inkRects.size() == count);
    std::vector<float> widths;
    widths.reserve(count);
    for (size_t i = 0; i < count; ++i) {
        double width = boxRects[i].xmax - boxRects[i].xmin;
        if (paragraphAt(i).alignment == eRichTextParagraphAlignment::Justify)
            width = width - offsets[i].first + (boxRects[i].xmax - inkRects[i].xmax);
        widths.push_back(static_cast<float>(width));
    }
    return widths;
}

void CRichTextDocumentLayouting::alignByInk(std::vector<MbRect>& rects, const MbRect& box) const {
    const std::vector<MbRect> inkRects = getParagraphInkRects(*m_textMetrics, m_document, box);
    std::vector<std::pair<double, double>> offsets = getAlignmentOffsets(m_document, rects, inkRects);
    COMMON_PRECONDITION(offsets.size() == m_document.paragraphs.size());
    unifyEdgeOffsets(offsets);
    const std::vector<float> widths = computeParagraphWidths(rects, inkRects, offsets);
    for (size_t i = 0; i < rects.size(); ++i) {
        rects[i].xmax = rects[i].xmin + widths[i];
        rects[i].Move(offsets[i].first, offsets[i].second);
    }
}

void CRichTextDocumentLayouting::layout() {
    MbRect box = m_layoutRect;
    insetRectHorizontally(box, m_horizontalMargin);
    if (box.xmin > box.xmax || box.ymin > box.ymax) {
        // Without a box the paragraphs have their natural sizes.
        m_rects = m_textMetrics->getParagraphRects(m_document, 0.0, 0.0);
        return;
    }
    std::vector<MbRect> rects = getParagraphBoxRects(*m_textMetrics, m_document, box);
    if (m_alignByTextBounds)
        alignByInk(rects, box);
    m_rects = std::move(rects);
}

} // namespace fonts
