#include "FontEngine.h"

#include <array>
#include <cstddef>
#include <utility>

#include <Common/Guards.h>
#include <FontEngine/FontUtils.h>
#include <oslayer/checkHResult.h>

#include "Font.h"
#include "TextAnalysis.h"

namespace fonts {

namespace {

constexpr std::size_t nameCapacity = 256;
using NameBuffer = std::array<WCHAR, nameCapacity>;

render::SRichTextToken tokenLike(const render::SRichTextToken& origin, std::wstring text, std::wstring fontFamily) {
    return {std::move(text), std::move(fontFamily), origin.fontCapSize, origin.color, origin.fontStyle};
}

// The first name of the family that the font belongs to. The platform's family
// and names objects are kept for good: it holds each of them once, so that a
// reference that is not given back costs no memory.
std::wstring familyNameOf(IDWriteFont* pFont) {
    oslayer::com_ptr<IDWriteFontFamily> pFontFamily;
    pFont->GetFontFamily(&pFontFamily);
    oslayer::com_ptr<IDWriteLocalizedStrings> pFamilyNames;
    pFontFamily->GetFamilyNames(&pFamilyNames);
    NameBuffer name{};
    pFamilyNames->GetString(0, name.data(), static_cast<UINT32>(name.size()));
    static_cast<void>(pFamilyNames.detach());
    static_cast<void>(pFontFamily.detach());
    return name.data();
}

// Appends the run [start, start + length) of the origin's text: as one token in
// the font that draws it, or unit by unit where no font does.
void appendRun(std::vector<render::SRichTextToken>& tokens, const render::SRichTextToken& origin, std::size_t start,
               std::size_t length, IDWriteFont* pMappedFont) {
    if (pMappedFont) {
        tokens.push_back(tokenLike(origin, origin.text.substr(start, length), familyNameOf(pMappedFont)));
        return;
    }
    for (const wchar_t unit : std::wstring_view(origin.text).substr(start, length))
        tokens.push_back(tokenLike(origin, std::wstring(1, unit), origin.fontFamily));
}

} // namespace

CFontEngine::CFontEngine(const std::wstring& fallbackFontName) : m_fallbackGDIFontName(fallbackFontName) {
    oslayer::com_ptr<IUnknown> pUnkFactory;
    DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &pUnkFactory);
    m_pDWriteFactory.queryFrom(pUnkFactory);
    OSLAYER_CHECK(m_pDWriteFactory->GetSystemFontCollection(&m_pFontCollection));
}

oslayer::com_ptr<IDWriteFont> CFontEngine::scanCollection(const std::wstring& fontFamily, Weight weight, Style style) {
    const UINT32 familyCount = m_pFontCollection->GetFontFamilyCount();
    for (UINT32 iFamily = 0; iFamily < familyCount; ++iFamily) {
        oslayer::com_ptr<IDWriteFontFamily> pFontFamily;
        OSLAYER_CHECK(m_pFontCollection->GetFontFamily(iFamily, &pFontFamily));
        if (auto pFont = findDWriteFontInFamily(pFontFamily, fontFamily, weight, style))
            return pFont;
    }
    return {};
}

IFont* CFontEngine::getFont(const std::wstring& fontFamily, Weight weight, Style style) {
    auto entry = m_fontCache.find(SFontKeyView{style, weight, fontFamily});
    if (entry == m_fontCache.end()) {
        std::unique_ptr<IFont> pFont;
        if (auto pDWriteFont = scanCollection(fontFamily, weight, style))
            pFont = std::make_unique<CFont>(std::move(pDWriteFont), fontFamily);
        entry = m_fontCache.emplace(SFontKey{style, weight, fontFamily}, std::move(pFont)).first;
    }
    return entry->second ? entry->second.get() : getFallbackFont();
}

IFont* CFontEngine::getFallbackFont() {
    if (!m_pFallbackFont) {
        UINT32 fontFamilyIndex = 0;
        BOOL fontFamilyExists = FALSE;
        OSLAYER_CHECK(
            m_pFontCollection->FindFamilyName(m_fallbackGDIFontName.c_str(), &fontFamilyIndex, &fontFamilyExists));
        if (!fontFamilyExists)
            fontFamilyIndex = 0;
        oslayer::com_ptr<IDWriteFontFamily> pFontFamily;
        OSLAYER_CHECK(m_pFontCollection->GetFontFamily(fontFamilyIndex, &pFontFamily));
        oslayer::com_ptr<IDWriteFont> pFont;
        pFontFamily->GetFont(0, &pFont);
        m_pFallbackFont = std::make_unique<CFont>(std::move(pFont), m_fallbackGDIFontName);
    }
    return m_pFallbackFont.get();
}

std::vector<render::SRichTextToken> CFontEngine::splitTokenByFallbackFonts(const render::SRichTextToken& originToken) {
    oslayer::com_ptr<IDWriteFactory2> pFactory2;
    pFactory2.queryFrom(m_pDWriteFactory);
    if (!pFactory2)
        return {originToken};
    oslayer::com_ptr<IDWriteFontFallback> pFontFallBack;
    OSLAYER_CHECK(pFactory2->GetSystemFontFallback(&pFontFallBack));

    const DWRITE_FONT_WEIGHT weight = originToken.fontStyle.bold ? DWRITE_FONT_WEIGHT_BOLD : DWRITE_FONT_WEIGHT_NORMAL;
    const DWRITE_FONT_STYLE style = originToken.fontStyle.italic ? DWRITE_FONT_STYLE_ITALIC : DWRITE_FONT_STYLE_NORMAL;
    // The call's source text is what a failure reports.
    // clang-format off
    oslayer::com_ptr<IDWriteTextFormat> pTextFormat;
    OSLAYER_CHECK(m_pDWriteFactory->CreateTextFormat(
        originToken.fontFamily.c_str(),
        m_pFontCollection,
        originToken.fontStyle.bold ? DWRITE_FONT_WEIGHT_BOLD : DWRITE_FONT_WEIGHT_NORMAL,
        originToken.fontStyle.italic ? DWRITE_FONT_STYLE_ITALIC : DWRITE_FONT_STYLE_NORMAL,
        DWRITE_FONT_STRETCH_NORMAL,
        originToken.fontCapSize,
        L"",
        &pTextFormat));
    // clang-format on
    NameBuffer localeName{};
    pTextFormat->GetLocaleName(localeName.data(), static_cast<UINT32>(localeName.size()));
    oslayer::com_ptr<IDWriteFontCollection> pFontCollection;
    pTextFormat->GetFontCollection(&pFontCollection);

    const auto textLength = static_cast<UINT32>(originToken.text.length());
    CLocalTextAnalysis source(originToken.text.c_str(), textLength, localeName.data(), nullptr, 0, 0);
    std::vector<render::SRichTextToken> tokens;
    for (UINT32 position = 0; position < textLength;) {
        UINT32 mappedLength = 0;
        IDWriteFont* pMappedFont = nullptr;
        FLOAT scale = 1.0f;
        OSLAYER_CHECK(pFontFallBack->MapCharacters(&source, position, textLength - position, pFontCollection,
                                                   originToken.fontFamily.c_str(), weight, style,
                                                   DWRITE_FONT_STRETCH_NORMAL, &mappedLength, &pMappedFont, &scale));
        // An empty run would be asked for again without end.
        COMMON_CHECK(mappedLength > 0);
        appendRun(tokens, originToken, position, mappedLength, pMappedFont);
        position += mappedLength;
    }
    return tokens;
}

std::unique_ptr<IFontEngine> createFontEngine(const std::wstring& fallbackFontName) {
    return std::make_unique<CFontEngine>(fallbackFontName);
}

} // namespace fonts
