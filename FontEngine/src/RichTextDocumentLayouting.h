#pragma once

#include <utility>
#include <vector>

#include <FontEngine/IRichTextDocumentLayouting.h>
#include <FontEngine/ITextMetrics.h>

namespace fonts {

// Places the paragraphs of a plain document. Owns a copy of the document and its
// results, borrows the metrics service.
class CRichTextDocumentLayouting final : public IRichTextDocumentLayouting {
public:
    CRichTextDocumentLayouting(const render::CRichTextDocument& document, const ITextMetrics* textMetrics);

    void setLayoutRect(const MbRect& layoutRect) override;
    void setHorizontalMargin(float horizontalMargin) override;
    void setAlignByTextBounds(bool alignByTextBounds) override;
    void layout() override;
    std::vector<MbRect> getRects() const override;
    std::vector<render::CRichTextParagraph> getParagraphs() const override;
    std::vector<boost::intrusive_ptr<MbRegion>> getRegions() const override;

private:
    const render::CRichTextParagraph& paragraphAt(size_t index) const;
    void alignByInk(std::vector<MbRect>& rects, const MbRect& box) const;
    void unifyEdgeOffsets(std::vector<std::pair<double, double>>& offsets) const;
    std::vector<float> computeParagraphWidths(const std::vector<MbRect>& boxRects, const std::vector<MbRect>& inkRects,
                                              const std::vector<std::pair<double, double>>& offsets) const;

    render::CRichTextDocument m_document;
    const ITextMetrics* m_textMetrics;
    MbRect m_layoutRect;
    float m_horizontalMargin = 0.0f;
    bool m_alignByTextBounds = false;
    std::vector<MbRect> m_rects;
};

} // namespace fonts
