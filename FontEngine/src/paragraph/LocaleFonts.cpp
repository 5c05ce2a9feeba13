#include "LocaleFonts.h"

#include <dwrite_2.h>

#include <array>
#include <utility>

#include <Common/Guards.h>
#include <oslayer/checkHResult.h>
#include <oslayer/com_ptr.h>

#include "../TextAnalysis.h"

namespace fonts {

namespace {

constexpr std::size_t nameCapacity = 256;

// The first name, by which the engine knows families too.
std::wstring familyOf(const oslayer::com_ptr<IDWriteFont>& pFont) {
    oslayer::com_ptr<IDWriteFontFamily> pFamily;
    OSLAYER_CHECK(pFont->GetFontFamily(&pFamily));
    oslayer::com_ptr<IDWriteLocalizedStrings> pNames;
    OSLAYER_CHECK(pFamily->GetFamilyNames(&pNames));
    std::array<WCHAR, nameCapacity> name{};
    OSLAYER_CHECK(pNames->GetString(0, name.data(), static_cast<UINT32>(name.size())));
    return name.data();
}

// As the engine's: one token in the font that draws it, or unit by unit where no font does.
void append(std::vector<render::SRichTextToken>& tokens, const render::SRichTextToken& origin, std::wstring text,
            const oslayer::com_ptr<IDWriteFont>& pFont) {
    render::SRichTextToken token = origin;
    if (pFont) {
        token.fontFamily = familyOf(pFont);
        token.text = std::move(text);
        tokens.push_back(std::move(token));
        return;
    }
    for (const wchar_t unit : text) {
        token.text.assign(1, unit);
        tokens.push_back(token);
    }
}

} // namespace

std::vector<render::SRichTextToken> CLocaleFonts::splitTokenByFallbackFonts(const render::SRichTextToken& originToken) {
    oslayer::com_ptr<IUnknown> pUnknown;
    OSLAYER_CHECK(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &pUnknown));
    oslayer::com_ptr<IDWriteFactory2> pFactory;
    pFactory.queryFrom(pUnknown);
    if (!pFactory) {
        return {originToken};
    }
    oslayer::com_ptr<IDWriteFontFallback> pFallback;
    OSLAYER_CHECK(pFactory->GetSystemFontFallback(&pFallback));
    oslayer::com_ptr<IDWriteFontCollection> pCollection;
    OSLAYER_CHECK(pFactory->GetSystemFontCollection(&pCollection));

    const bool isBold = originToken.fontStyle.bold;
    const bool isItalic = originToken.fontStyle.italic;
    const auto length = static_cast<UINT32>(originToken.text.length());
    CLocalTextAnalysis source(originToken.text.c_str(), length, m_locale.c_str(), nullptr, 0, 0);
    std::vector<render::SRichTextToken> tokens;
    for (UINT32 position = 0; position < length;) {
        UINT32 mappedLength = 0;
        oslayer::com_ptr<IDWriteFont> pFont;
        FLOAT scale = 1.0F;
        OSLAYER_CHECK(pFallback->MapCharacters(&source, position, length - position, pCollection,
                                               originToken.fontFamily.c_str(),
                                               isBold ? DWRITE_FONT_WEIGHT_BOLD : DWRITE_FONT_WEIGHT_NORMAL,
                                               isItalic ? DWRITE_FONT_STYLE_ITALIC : DWRITE_FONT_STYLE_NORMAL,
                                               DWRITE_FONT_STRETCH_NORMAL, &mappedLength, &pFont, &scale));
        // An empty run would be asked for again without end.
        COMMON_CHECK(mappedLength > 0);
        append(tokens, originToken, originToken.text.substr(position, mappedLength), pFont);
        position += mappedLength;
    }
    return tokens;
}

} // namespace fonts
