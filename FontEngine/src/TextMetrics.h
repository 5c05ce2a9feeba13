#pragma once

#include <d2d1.h>
#include <dwrite.h>

#include <Common/Memoizer.h>
#include <FontEngine/ITextMetrics.h>
#include <oslayer/com_ptr.h>

namespace fonts {

// The text metrics service over the platform's text layouts: layout boxes are
// what a layout says of itself, ink boxes and glyph runs come from drawing it
// into a CTextToGlyphRunRenderer.
class CTextMetrics final : public ITextMetrics {
public:
    explicit CTextMetrics(IFontEngine* fontEngine);
    CTextMetrics(const CTextMetrics&) = delete;
    CTextMetrics& operator=(const CTextMetrics&) = delete;

    MbRect getTextRect(const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                       render::SRichTextFontStyle fontStyle) const override;
    MbRect getDocumentRect(const render::CRichTextDocument& document) const override;
    std::vector<MbRect> getParagraphRects(const render::CRichTextDocument& document, double maxWidth,
                                          double maxHeight) const override;
    MbRect getTextGeometryRect(const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                               std::optional<double> tabStopWidth, render::SRichTextFontStyle fontStyle) const override;
    MbRect getDocumentGeometryRect(const render::CRichTextDocument& document, double maxWidth,
                                   double maxHeight) const override;
    std::vector<MbRect> getParagraphGeometryRects(const render::CRichTextDocument& document, double maxWidth,
                                                  double maxHeight) const override;
    double getTextBaseline(const std::wstring& text, const std::wstring& fontFamily, float fontCapSize,
                           std::optional<double> tabStopWidth, render::SRichTextFontStyle fontStyle) const override;
    SFontMetrics getFontMetrics(const std::wstring& fontFamily, double fontCapSize, bool italic,
                                bool bold) const override;
    std::vector<SGlyphRunDesc>
    getGlyphRuns(const render::CRichTextParagraph& paragraph, double maxWidth, double maxHeight,
                 std::optional<double> tabStopWidth,
                 std::vector<boost::intrusive_ptr<MbRegion>>& decorationRegions) const override;

private:
    oslayer::com_ptr<IDWriteTextFormat> createTextFormat(const std::wstring& fontFamily, float fontSize,
                                                         render::SRichTextFontStyle fontStyle) const;
    oslayer::com_ptr<IDWriteTextLayout> createTextLayout(const std::wstring& text, const std::wstring& fontFamily,
                                                         float fontSize, std::optional<double> givenTabStopWidth,
                                                         render::SRichTextFontStyle fontStyle) const;
    MbRect computeDocumentRect(const render::CRichTextDocument& document) const;

    IFontEngine* m_fontEngine;
    oslayer::com_ptr<IDWriteFactory> m_dwFactory;
    oslayer::com_ptr<IDWriteFontCollection> m_pFontCollection;
    oslayer::com_ptr<ID2D1Factory> m_d2dFactory;
    // Remembering a box changes nothing a caller can see, and the memo guards itself.
    mutable common::Memoizer<const render::CRichTextDocument&, size_t, MbRect> m_rectMemoizer;
};

} // namespace fonts
