#include <FontEngine/FontUtils.h>

#include <Common/Guards.h>
#include <oslayer/checkHResult.h>

namespace fonts {

namespace {

// The Win32 family names of a font in all its languages; empty if it has none.
oslayer::com_ptr<IDWriteLocalizedStrings> win32FamilyNames(IDWriteFont* pFont) {
    oslayer::com_ptr<IDWriteLocalizedStrings> pStrings;
    BOOL stringExists = FALSE;
    OSLAYER_CHECK(
        pFont->GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES, &pStrings, &stringExists));
    return stringExists ? pStrings : nullptr;
}

bool nameEquals(IDWriteLocalizedStrings* pFamilyNames, UINT32 index, const std::wstring& fontFamily) {
    UINT32 stringLength = 0;
    OSLAYER_CHECK(pFamilyNames->GetStringLength(index, &stringLength));
    std::wstring name(stringLength + 1, L'\0');
    OSLAYER_CHECK(pFamilyNames->GetString(index, &name[0], stringLength + 1));
    name.resize(stringLength);
    return name == fontFamily;
}

bool isObliqueForItalic(IDWriteFont* pFont, Weight weight, Style style) {
    return style == Style::Italic && pFont->GetStyle() == DWRITE_FONT_STYLE_OBLIQUE &&
           weightFromDWriteWeight(pFont->GetWeight()) == weight;
}

bool isExactly(IDWriteFont* pFont, Weight weight, Style style) {
    return styleFromDWriteStyle(pFont->GetStyle()) == style && weightFromDWriteWeight(pFont->GetWeight()) == weight &&
           pFont->GetStretch() == DWRITE_FONT_STRETCH_NORMAL;
}

} // namespace

Weight weightFromBool(bool bold) {
    return bold ? Weight::Bold : Weight::Normal;
}

Style styleFromBool(bool italic) {
    return italic ? Style::Italic : Style::Normal;
}

Underline underlineFromBool(bool underline) {
    return underline ? Underline::Underlined : Underline::None;
}

Weight weightFromDWriteWeight(const DWRITE_FONT_WEIGHT& weight) {
    return weight == DWRITE_FONT_WEIGHT_BOLD ? Weight::Bold : Weight::Normal;
}

Style styleFromDWriteStyle(const DWRITE_FONT_STYLE& style) {
    return style == DWRITE_FONT_STYLE_ITALIC ? Style::Italic : Style::Normal;
}

oslayer::com_ptr<IDWriteFont> findDWriteFontInFamily(IDWriteFontFamily* pDWriteFontFamily,
                                                     const std::wstring& fontFamily, Weight weight, Style style) {
    const oslayer::com_ptr<IDWriteFontFamily> pFontFamily(pDWriteFontFamily);
    oslayer::com_ptr<IDWriteFont> pCandidate;
    const UINT32 fontCount = pFontFamily->GetFontCount();
    for (UINT32 iFont = 0; iFont < fontCount; ++iFont) {
        oslayer::com_ptr<IDWriteFont> pFont;
        OSLAYER_CHECK(pFontFamily->GetFont(iFont, &pFont));
        const oslayer::com_ptr<IDWriteLocalizedStrings> pFamilyNames = win32FamilyNames(pFont);
        const UINT32 nameCount = pFamilyNames ? pFamilyNames->GetCount() : 0;
        // The exact face ends the search at once; else every name is read, so that one that cannot be is reported.
        for (UINT32 index = 0; index < nameCount; ++index) {
            if (!nameEquals(pFamilyNames, index, fontFamily))
                continue;
            if (!pCandidate || isObliqueForItalic(pFont, weight, style))
                pCandidate = pFont;
            if (isExactly(pFont, weight, style))
                return pFont;
        }
    }
    return pCandidate;
}

void setGdiFontToTextLayout(IDWriteTextLayout* pTextLayout, const render::TextRange& textRange, IFontEngine* fontEngine,
                            const std::wstring& fontFamily, double capitalSize, render::SRichTextFontStyle fontStyle) {
    COMMON_CHECK(capitalSize > 0.0);
    IFont& font = *fontEngine->getFont(fontFamily, weightFromBool(fontStyle.bold), styleFromBool(fontStyle.italic));
    const DWRITE_TEXT_RANGE range{textRange.startPosition, textRange.length};
    const DWRITE_FONT_WEIGHT dWFontWeight = fontStyle.bold ? DWRITE_FONT_WEIGHT_BOLD : DWRITE_FONT_WEIGHT_NORMAL;
    const DWRITE_FONT_STYLE dWFontStyle = fontStyle.italic ? DWRITE_FONT_STYLE_ITALIC : DWRITE_FONT_STYLE_NORMAL;
    const DWRITE_FONT_STRETCH dWFontStretch = DWRITE_FONT_STRETCH_NORMAL;
    const BOOL dWFontUnderline = fontStyle.underline ? TRUE : FALSE;

    OSLAYER_CHECK(pTextLayout->SetFontFamilyName(font.fontFamily().c_str(), range));
    OSLAYER_CHECK(pTextLayout->SetFontSize(static_cast<float>(font.capitalLetterSizeToFontSize(capitalSize)), range));
    OSLAYER_CHECK(pTextLayout->SetFontWeight(dWFontWeight, range));
    OSLAYER_CHECK(pTextLayout->SetFontStyle(dWFontStyle, range));
    OSLAYER_CHECK(pTextLayout->SetFontStretch(dWFontStretch, range));
    OSLAYER_CHECK(pTextLayout->SetUnderline(dWFontUnderline, range));
}

DWRITE_TEXT_ALIGNMENT getTextAlignment(const render::eRichTextParagraphAlignment& alignment) {
    using enum render::eRichTextParagraphAlignment;
    switch (alignment) {
    case Right:
        return DWRITE_TEXT_ALIGNMENT_TRAILING;
    case Center:
        return DWRITE_TEXT_ALIGNMENT_CENTER;
    case Justify:
        return DWRITE_TEXT_ALIGNMENT_JUSTIFIED;
    case Default:
    case Left:
        break;
    }
    return DWRITE_TEXT_ALIGNMENT_LEADING;
}

DWRITE_PARAGRAPH_ALIGNMENT getParagraphAlignment(const render::eRichTextParagraphVerticalAlignment& alignment) {
    using enum render::eRichTextParagraphVerticalAlignment;
    switch (alignment) {
    case Middle:
        return DWRITE_PARAGRAPH_ALIGNMENT_CENTER;
    case Bottom:
        return DWRITE_PARAGRAPH_ALIGNMENT_FAR;
    case Default:
    case Top:
        break;
    }
    return DWRITE_PARAGRAPH_ALIGNMENT_NEAR;
}

} // namespace fonts
