#include "RichTextDxfLayouting.h"

#include <stdexcept>
#include <utility>

#include "ParagraphPlacement.h"

namespace fonts {

CRichTextDxfLayouting::CRichTextDxfLayouting(const render::CRichTextDocument& document, const ITextMetrics* textMetrics)
    : m_document(&document), m_textMetrics(textMetrics) {}

void CRichTextDxfLayouting::setLayoutRect(const MbRect& layoutRect) {
    m_layoutRect = layoutRect;
}

void CRichTextDxfLayouting::setHorizontalMargin(float horizontalMargin) {
    m_horizontalMargin = horizontalMargin;
}

void CRichTextDxfLayouting::setAlignByTextBounds(bool alignByTextBounds) {
    m_alignByTextBounds = alignByTextBounds;
}

std::vector<MbRect> CRichTextDxfLayouting::getRects() const {
    return m_rects;
}

std::vector<render::CRichTextParagraph> CRichTextDxfLayouting::getParagraphs() const {
    const auto count = static_cast<int32_t>(m_document->paragraphs.size());
    if (count < 0)
        throw std::length_error("vector too long");
    std::vector<render::CRichTextParagraph> paragraphs;
    paragraphs.reserve(static_cast<size_t>(count));
    for (int32_t i = 0; i < count; ++i)
        paragraphs.push_back(m_document->paragraphs.at(i));
    return paragraphs;
}

std::vector<boost::intrusive_ptr<MbRegion>> CRichTextDxfLayouting::getRegions() const {
    return {};
}

void CRichTextDxfLayouting::layout() {
    MbRect box = m_layoutRect;
    insetRectHorizontally(box, m_horizontalMargin);
    if (box.xmin > box.xmax || box.ymin > box.ymax)
        return;

    std::vector<MbRect> rects = getParagraphBoxRects(*m_textMetrics, *m_document, box);
    if (!m_alignByTextBounds) {
        const std::vector<MbRect> inkRects = getParagraphInkRects(*m_textMetrics, *m_document, box);
        const std::vector<std::pair<double, double>> offsets = getAlignmentOffsets(*m_document, rects, inkRects);
        // From the box's alignment point to the ink's: against the offset, unlike
        // the plain layouting.
        for (size_t i = 0; i < rects.size(); ++i)
            rects[i].Move(-offsets[i].first, -offsets[i].second);
    }
    m_rects = std::move(rects);
}

} // namespace fonts
