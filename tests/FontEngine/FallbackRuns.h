#pragma once

#include <string>
#include <vector>

#include <dwrite.h>

#include <FontEngine/IFontEngine.h>
#include <oslayer/com_ptr.h>
#include <render/RichTextDocument.h>

#include "SystemCollection.h"

// What the tests of fallback on the pinned fonts share.
namespace fallbackruns {

inline std::vector<render::SRichTextToken>
split(const std::wstring& text, const std::wstring& family = L"Liberation Sans", float capSize = 2.5f) {
    const auto engine = fonts::createFontEngine(L"Liberation Sans");
    return engine->splitTokenByFallbackFonts(render::makeToken(text, family, capSize, {}));
}

// Code points of UTF-16 text; a lone surrogate stands for itself.
inline std::vector<UINT32> codePointsOf(const std::wstring& text) {
    std::vector<UINT32> codePoints;
    for (std::size_t i = 0; i < text.length(); ++i) {
        const auto unit = static_cast<UINT32>(text[i]);
        if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < text.length())
            codePoints.push_back(0x10000 + ((unit - 0xD800) << 10) + (static_cast<UINT32>(text[++i]) - 0xDC00));
        else
            codePoints.push_back(unit);
    }
    return codePoints;
}

// Whether some font of the family has the character.
inline bool familyHas(const std::wstring& familyName, UINT32 codePoint) {
    const oslayer::com_ptr<IDWriteFontCollection> collection = systemCollection();
    UINT32 index = 0;
    BOOL exists = FALSE;
    collection->FindFamilyName(familyName.c_str(), &index, &exists);
    if (!exists)
        return false;
    oslayer::com_ptr<IDWriteFontFamily> family;
    collection->GetFontFamily(index, &family);
    for (UINT32 i = 0; i < family->GetFontCount(); ++i) {
        oslayer::com_ptr<IDWriteFont> font;
        family->GetFont(i, &font);
        BOOL has = FALSE;
        font->HasCharacter(codePoint, &has);
        if (has)
            return true;
    }
    return false;
}

inline std::wstring joined(const std::vector<render::SRichTextToken>& runs) {
    std::wstring text;
    for (const render::SRichTextToken& run : runs)
        text += run.text;
    return text;
}

} // namespace fallbackruns
