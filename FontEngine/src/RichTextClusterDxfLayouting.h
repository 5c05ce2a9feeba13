#pragma once

#include <string>
#include <vector>

#include <FontEngine/IRichTextDocumentLayouting.h>
#include <FontEngine/ITextMetrics.h>
#include <geometry/MbCartPoint.h>

namespace fonts {

// Takes a document that stands for a DXF MText entity apart into glyph clusters,
// each a paragraph of one token with a rectangle where the shaper put the
// cluster's first glyph, so that every cluster can be written as a single-line
// text of its own and the drawing looks the same. Underlines come as regions.
//
// Owns a copy of the document and its results, borrows the metrics service.
class CRichTextClusterDxfLayouting final : public IRichTextDocumentLayouting {
public:
    CRichTextClusterDxfLayouting(const render::CRichTextDocument& document, const ITextMetrics* textMetrics);

    void setLayoutRect(const MbRect& layoutRect) override;
    void setHorizontalMargin(float horizontalMargin) override;
    // Clusters stand where their glyphs are; the flag changes nothing.
    void setAlignByTextBounds(bool alignByTextBounds) override;
    void layout() override;
    std::vector<MbRect> getRects() const override;
    std::vector<render::CRichTextParagraph> getParagraphs() const override;
    std::vector<boost::intrusive_ptr<MbRegion>> getRegions() const override;

private:
    void layoutParagraph(const render::CRichTextParagraph& paragraph, const MbRect& rect);
    void placeClusters(const SGlyphRunDesc& run, const MbCartPoint& boxOrigin);
    void placeCluster(const render::SRichTextToken& token, std::wstring text, const MbCartPoint& glyphOrigin,
                      const MbCartPoint& boxOrigin);

    render::CRichTextDocument m_document;
    const ITextMetrics* m_textMetrics;
    MbRect m_layoutRect;
    float m_horizontalMargin = 0.0f;
    std::vector<render::CRichTextParagraph> m_clusterParagraphs;
    std::vector<MbRect> m_rects;
    std::vector<boost::intrusive_ptr<MbRegion>> m_decorationRegions;
};

} // namespace fonts
