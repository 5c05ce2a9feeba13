#include "format/FormatSettings.h"

#include <vector>

#include "fonts/FontCollection.h"

namespace platform {

namespace {

void readParagraph(IDWriteTextFormat& format, ParagraphSettings& paragraph) {
    paragraph.textAlignment = format.GetTextAlignment();
    paragraph.paragraphAlignment = format.GetParagraphAlignment();
    paragraph.wordWrapping = format.GetWordWrapping();
    paragraph.readingDirection = format.GetReadingDirection();
    paragraph.flowDirection = format.GetFlowDirection();
    paragraph.incrementalTabStop = format.GetIncrementalTabStop();
    format.GetLineSpacing(&paragraph.lineSpacingMethod, &paragraph.lineSpacing, &paragraph.lineBaseline);
    IDWriteInlineObject* sign = nullptr;
    format.GetTrimming(&paragraph.trimming, &sign);
    paragraph.trimmingSign = Reference<IDWriteInlineObject>(sign, false);
}

/// What only formats of the second generation say.
void readLaterParagraph(IDWriteTextFormat& format, ParagraphSettings& paragraph) {
    void* queried = nullptr;
    if (FAILED(format.QueryInterface(__uuidof(IDWriteTextFormat1), &queried)) || queried == nullptr) {
        return;
    }
    const Reference<IDWriteTextFormat1> later(static_cast<IDWriteTextFormat1*>(queried), false);
    paragraph.verticalGlyphOrientation = later->GetVerticalGlyphOrientation();
    paragraph.lastLineWrapping = later->GetLastLineWrapping() != FALSE;
    paragraph.opticalAlignment = later->GetOpticalAlignment();
    IDWriteFontFallback* fallback = nullptr;
    later->GetFontFallback(&fallback);
    paragraph.fontFallback = Reference<IDWriteFontFallback>(fallback, false);
}

HRESULT readFont(IDWriteTextFormat& format, FontSettings& font) {
    IDWriteFontCollection* collection = nullptr;
    format.GetFontCollection(&collection);
    font.collection = Reference<IDWriteFontCollection>(collection, false);
    if (!CFontCollection::isUsable(collection)) {
        return E_INVALIDARG;
    }
    font.weight = format.GetFontWeight();
    font.style = format.GetFontStyle();
    font.stretch = format.GetFontStretch();
    font.size = format.GetFontSize();
    std::vector<WCHAR> name(format.GetFontFamilyNameLength() + 1);
    HRESULT result = format.GetFontFamilyName(name.data(), static_cast<UINT32>(name.size()));
    if (FAILED(result)) {
        return result;
    }
    font.family = makeName(name.data());
    name.assign(format.GetLocaleNameLength() + 1, L'\0');
    result = format.GetLocaleName(name.data(), static_cast<UINT32>(name.size()));
    if (FAILED(result)) {
        return result;
    }
    font.locale = makeLocaleName(name.data());
    return S_OK;
}

} // namespace

HRESULT readFormat(IDWriteTextFormat& format, FormatSettings& settings) {
    void* own = nullptr;
    if (SUCCEEDED(format.QueryInterface(formatSettingsId, &own)) && own != nullptr) {
        settings = *static_cast<const FormatSettings*>(own);
        return S_OK;
    }
    readParagraph(format, settings.paragraph);
    readLaterParagraph(format, settings.paragraph);
    return readFont(format, settings.font);
}

} // namespace platform
