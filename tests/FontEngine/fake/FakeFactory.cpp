#include <limits>

#include "FakeObjects.h"

namespace fake {

namespace {

// The source's whole text, as a platform reads it.
std::wstring textOf(IDWriteTextAnalysisSource& source) {
    const WCHAR* text = nullptr;
    UINT32 length = 0;
    source.GetTextAtPosition(0, &text, &length);
    return text ? std::wstring(text, length) : std::wstring();
}

} // namespace

Objects::Objects()
    : factory(otherReferences, Lifetime::Platform), collection(otherReferences, Lifetime::Platform),
      fallback(otherReferences, Lifetime::Platform), face(otherReferences, Lifetime::Platform) {}

std::vector<std::unique_ptr<Family>>& Objects::families() {
    if (!m_familiesMade) {
        m_familiesMade = true;
        for (const FamilySpec& family : platform().families)
            m_families.push_back(std::make_unique<Family>(family, *this));
    }
    return m_families;
}

HRESULT Factory::QueryInterface(REFIID riid, void** object) {
    const char* name = riid == __uuidof(IDWriteFactory)    ? "IDWriteFactory"
                       : riid == __uuidof(IDWriteFactory2) ? "IDWriteFactory2"
                                                           : "another interface";
    if (const HRESULT result = record("Factory.QueryInterface", name); FAILED(result)) {
        *object = nullptr;
        return result;
    }
    return Object::QueryInterface(riid, object);
}

HRESULT Factory::GetSystemFontCollection(IDWriteFontCollection** collection, BOOL check) {
    return handOut(record("Factory.GetSystemFontCollection", check), &objects().collection, collection);
}

HRESULT Factory::CreateTextFormat(const WCHAR* familyName, IDWriteFontCollection* collection, DWRITE_FONT_WEIGHT weight,
                                  DWRITE_FONT_STYLE style, DWRITE_FONT_STRETCH stretch, FLOAT size,
                                  const WCHAR* localeName, IDWriteTextFormat** textFormat) {
    const HRESULT result = record("Factory.CreateTextFormat", quoted(familyName), kindOf(collection), weight, style,
                                  stretch, size, quoted(localeName));
    return handOut(result, FAILED(result) ? nullptr : newTextFormat(), textFormat);
}

HRESULT Factory::CreateTypography(IDWriteTypography**) {
    return unexpected("CreateTypography");
}

HRESULT Factory::CreateTextLayout(const WCHAR* string, UINT32 stringLength, IDWriteTextFormat* textFormat,
                                  FLOAT maxWidth, FLOAT maxHeight, IDWriteTextLayout** layout) {
    LayoutState state;
    state.text.assign(string, stringLength);
    state.maxWidth = maxWidth;
    state.maxHeight = maxHeight;
    const HRESULT result = record("Factory.CreateTextLayout", quoted(state.text.c_str()), stringLength,
                                  textFormat ? "Format" : "null", maxWidth, maxHeight);
    return handOut(result, FAILED(result) ? nullptr : newTextLayout(std::move(state)), layout);
}

HRESULT Factory::GetSystemFontFallback(IDWriteFontFallback** fallback) {
    return handOut(record("Factory.GetSystemFontFallback"), &objects().fallback, fallback);
}

HRESULT Fallback::MapCharacters(IDWriteTextAnalysisSource* analysisSource, UINT32 textPosition, UINT32 textLength,
                                IDWriteFontCollection* baseFontCollection, const WCHAR* baseFamilyName,
                                DWRITE_FONT_WEIGHT baseWeight, DWRITE_FONT_STYLE baseStyle,
                                DWRITE_FONT_STRETCH baseStretch, UINT32* mappedLength, IDWriteFont** mappedFont,
                                FLOAT* scale) {
    if (platform().onAnalysisSource)
        platform().onAnalysisSource(analysisSource);
    const std::wstring text = textOf(*analysisSource);
    *mappedLength = 0;
    *mappedFont = nullptr;
    EXPECT_EQ(*scale, 1.0f);
    const HRESULT result =
        record("Fallback.MapCharacters", quoted(text.c_str()), textPosition, textLength, kindOf(baseFontCollection),
               quoted(baseFamilyName), baseWeight, baseStyle, baseStretch);
    if (FAILED(result))
        return result;
    const FallbackAnswer answer = platform().mapCharacters(text, textPosition, textLength);
    *mappedLength = answer.length;
    // Nobody may take over a font's scale.
    *scale = std::numeric_limits<FLOAT>::quiet_NaN();
    if (answer.family < 0)
        return S_OK;
    Family& family = *objects().families().at(static_cast<std::size_t>(answer.family));
    return handOut(S_OK, &family.font(static_cast<std::size_t>(answer.font)), mappedFont);
}

} // namespace fake
