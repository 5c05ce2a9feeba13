#pragma once

#include <vector>

#include <FontEngine/IRichTextDocumentLayouting.h>
#include <FontEngine/ITextMetrics.h>

namespace fonts {

// Places the paragraphs of a document that stands for a DXF MText entity.
//
// Three things are meant to differ from the plain layouting: the document is
// borrowed (the caller keeps it alive and sees its changes at the next layout()),
// an empty box keeps the previous results, and the flag has the inverse sense:
// text is aligned by its ink unless setAlignByTextBounds(true) was called.
class CRichTextDxfLayouting final : public IRichTextDocumentLayouting {
public:
    CRichTextDxfLayouting(const render::CRichTextDocument& document, const ITextMetrics* textMetrics);

    void setLayoutRect(const MbRect& layoutRect) override;
    void setHorizontalMargin(float horizontalMargin) override;
    void setAlignByTextBounds(bool alignByTextBounds) override;
    void layout() override;
    std::vector<MbRect> getRects() const override;
    std::vector<render::CRichTextParagraph> getParagraphs() const override;
    std::vector<boost::intrusive_ptr<MbRegion>> getRegions() const override;

private:
    const render::CRichTextDocument* m_document;
    const ITextMetrics* m_textMetrics;
    MbRect m_layoutRect;
    float m_horizontalMargin = 0.0f;
    bool m_alignByTextBounds = false;
    std::vector<MbRect> m_rects;
};

} // namespace fonts
