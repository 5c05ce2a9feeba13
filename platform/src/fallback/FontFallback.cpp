#include "fallback/FontFallback.h"

#include <algorithm>
#include <string>

#include "fallback/FallbackMapper.h"
#include "fallback/NearbyLetters.h"
#include "fallback/SourceText.h"
#include "fonts/Font.h"
#include "fonts/FontCollection.h"

namespace platform {

namespace {

/// How much text is fetched at first. Callers ask again after every stretch, so fetching all that remains each time
/// would cost the square of the text's length.
constexpr std::size_t firstPiece = 2 * NearbyLetters::reach;

struct Locale {
    std::wstring name;
    UINT32 length;
};

/// The locale at a position and for how many positions it holds. Sources that do not say how far mean all the rest.
HRESULT localeAt(IDWriteTextAnalysisSource& source, UINT32 position, UINT32 length, Locale& locale) {
    const WCHAR* name = nullptr;
    UINT32 held = 0;
    const HRESULT result = source.GetLocaleName(position, &held, &name);
    if (SUCCEEDED(result)) {
        locale.name = name != nullptr ? name : L"";
        locale.length = held == 0 ? length : std::min(held, length);
    }
    return result;
}

} // namespace

CFontFallback& CFontFallback::system() {
    static CFontFallback fallback(FallbackMapper::system());
    return fallback;
}

HRESULT CFontFallback::MapCharacters(IDWriteTextAnalysisSource* analysisSource, UINT32 textPosition, UINT32 textLength,
                                     IDWriteFontCollection* baseFontCollection, const WCHAR* baseFamilyName,
                                     DWRITE_FONT_WEIGHT baseWeight, DWRITE_FONT_STYLE baseStyle,
                                     DWRITE_FONT_STRETCH baseStretch, UINT32* mappedLength, IDWriteFont** mappedFont,
                                     FLOAT* scale) {
    *mappedLength = 0;
    *mappedFont = nullptr;
    *scale = 1.0F;
    if (analysisSource == nullptr || !CFontCollection::isUsable(baseFontCollection)) {
        return E_INVALIDARG;
    }
    if (textLength == 0) {
        return S_OK;
    }
    return guarded([&] {
        Locale locale;
        if (const HRESULT result = localeAt(*analysisSource, textPosition, textLength, locale); FAILED(result)) {
            return result;
        }
        CFontFamily* const family =
            baseFamilyName != nullptr ? CFontCollection::of(baseFontCollection).familyFor(baseFamilyName) : nullptr;
        SourceText text(*analysisSource, textPosition, locale.length);
        text.fetchBefore(NearbyLetters::reach);
        Mapping mapping;
        for (std::size_t count = firstPiece;; count *= 2) {
            if (const HRESULT result = text.fetch(count); FAILED(result)) {
                return result;
            }
            mapping = m_mapper.map(text.units(), text.start(), text.length(), locale.name, family, baseWeight,
                                   baseStyle, baseStretch);
            // What follows the stretch decides about it: whether it goes on, and which font has all of it.
            if (text.complete() || mapping.length + NearbyLetters::reach <= text.length()) {
                break;
            }
        }
        *mappedLength = mapping.length;
        *scale = mapping.scale;
        if (mapping.font != nullptr) {
            handOut(*mapping.font, mappedFont);
        }
        return S_OK;
    });
}

} // namespace platform
