#include <algorithm>

#include "FakeObjects.h"

namespace fake {

namespace {

std::string array(const UINT16* values, UINT32 count) {
    std::ostringstream text;
    text << '[';
    for (UINT32 i = 0; values && i < count; ++i)
        text << (i ? " " : "") << values[i];
    text << ']';
    return values ? text.str() : "null";
}

std::string array(const FLOAT* values, UINT32 count) {
    std::ostringstream text;
    text << '[';
    for (UINT32 i = 0; values && i < count; ++i)
        text << (i ? " " : "") << values[i];
    text << ']';
    return values ? text.str() : "null";
}

std::string array(const DWRITE_GLYPH_OFFSET* values, UINT32 count) {
    std::ostringstream text;
    text << '[';
    for (UINT32 i = 0; values && i < count; ++i)
        text << (i ? " " : "") << values[i].advanceOffset << '/' << values[i].ascenderOffset;
    text << ']';
    return values ? text.str() : "null";
}

} // namespace

// ---- strings ----

HRESULT LocalizedStrings::FindLocaleName(const WCHAR*, UINT32*, BOOL*) {
    return unexpected("FindLocaleName");
}
HRESULT LocalizedStrings::GetLocaleNameLength(UINT32, UINT32*) {
    return unexpected("GetLocaleNameLength");
}
HRESULT LocalizedStrings::GetLocaleName(UINT32, WCHAR*, UINT32) {
    return unexpected("GetLocaleName");
}

HRESULT LocalizedStrings::GetStringLength(UINT32 index, UINT32* length) {
    const HRESULT result = record(operation("GetStringLength").c_str(), index);
    if (SUCCEEDED(result))
        *length = static_cast<UINT32>(m_strings.at(index).length());
    return result;
}

HRESULT LocalizedStrings::GetString(UINT32 index, WCHAR* stringBuffer, UINT32 size) {
    const HRESULT result = record(operation("GetString").c_str(), index, size);
    if (FAILED(result))
        return result;
    const std::wstring& string = m_strings.at(index);
    if (size <= string.length()) {
        stringBuffer[0] = L'\0';
        return E_NOT_SUFFICIENT_BUFFER;
    }
    std::copy(string.begin(), string.end(), stringBuffer);
    stringBuffer[string.length()] = L'\0';
    return result;
}

// ---- font ----

HRESULT Font::GetFontFamily(IDWriteFontFamily** fontFamily) {
    return handOut(record("Font.GetFontFamily"), &m_family, fontFamily);
}

HRESULT Font::GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_ID id, IDWriteLocalizedStrings** strings,
                                      BOOL* exists) {
    *strings = nullptr;
    const HRESULT result = record("Font.GetInformationalStrings", id);
    *exists = SUCCEEDED(result) && !m_spec.win32FamilyNames.empty();
    if (!*exists)
        return result;
    return handOut(result,
                   new LocalizedStrings("Win32Names", m_spec.win32FamilyNames, m_otherReferences, Lifetime::References),
                   strings);
}

void Font::GetMetrics(DWRITE_FONT_METRICS* metrics) {
    record("Font.GetMetrics");
    *metrics = m_spec.metrics;
}

HRESULT Font::GetFaceNames(IDWriteLocalizedStrings**) {
    return unexpected("GetFaceNames");
}
DWRITE_FONT_SIMULATIONS Font::GetSimulations() {
    unexpected("GetSimulations");
    return DWRITE_FONT_SIMULATIONS_NONE;
}
HRESULT Font::HasCharacter(UINT32, BOOL*) {
    return unexpected("HasCharacter");
}
HRESULT Font::CreateFontFace(IDWriteFontFace**) {
    return unexpected("CreateFontFace");
}

// ---- family ----

Family::Family(const FamilySpec& spec, Objects& objects)
    : Object(objects.familyReferences, Lifetime::Platform), m_names(spec.names),
      m_familyNames("FamilyNames", spec.names, objects.familyNamesReferences, Lifetime::Platform) {
    for (const FontSpec& font : spec.fonts)
        m_fonts.push_back(std::make_unique<Font>(*this, font, objects.fontReferences, objects.otherReferences));
}

UINT32 Family::GetFontCount() {
    record("Family.GetFontCount");
    return static_cast<UINT32>(m_fonts.size());
}

HRESULT Family::GetFont(UINT32 index, IDWriteFont** font) {
    const HRESULT result = record("Family.GetFont", index);
    if (index >= m_fonts.size()) {
        *font = nullptr;
        return E_FAIL;
    }
    return handOut(result, m_fonts[index].get(), font);
}

HRESULT Family::GetFamilyNames(IDWriteLocalizedStrings** names) {
    return handOut(record("Family.GetFamilyNames"), &m_familyNames, names);
}

bool Family::hasName(const std::wstring& name) const {
    return std::find(m_names.begin(), m_names.end(), name) != m_names.end();
}

HRESULT Family::GetFontCollection(IDWriteFontCollection**) {
    return unexpected("Family.GetFontCollection");
}
HRESULT Family::GetFirstMatchingFont(DWRITE_FONT_WEIGHT, DWRITE_FONT_STRETCH, DWRITE_FONT_STYLE, IDWriteFont**) {
    return unexpected("GetFirstMatchingFont");
}
HRESULT Family::GetMatchingFonts(DWRITE_FONT_WEIGHT, DWRITE_FONT_STRETCH, DWRITE_FONT_STYLE, IDWriteFontList**) {
    return unexpected("GetMatchingFonts");
}

// ---- collection ----

UINT32 Collection::GetFontFamilyCount() {
    record("Collection.GetFontFamilyCount");
    return static_cast<UINT32>(objects().families().size());
}

HRESULT Collection::GetFontFamily(UINT32 index, IDWriteFontFamily** fontFamily) {
    const HRESULT result = record("Collection.GetFontFamily", index);
    auto& families = objects().families();
    if (index >= families.size()) {
        *fontFamily = nullptr;
        return E_FAIL;
    }
    return handOut(result, families[index].get(), fontFamily);
}

HRESULT Collection::FindFamilyName(const WCHAR* familyName, UINT32* index, BOOL* exists) {
    *index = 0xFFFFFFFFu;
    *exists = FALSE;
    const HRESULT result = record("Collection.FindFamilyName", quoted(familyName));
    auto& families = objects().families();
    const auto found =
        std::find_if(families.begin(), families.end(), [&](const auto& family) { return family->hasName(familyName); });
    if (SUCCEEDED(result) && found != families.end()) {
        *index = static_cast<UINT32>(found - families.begin());
        *exists = TRUE;
    }
    return result;
}

HRESULT Collection::GetFontFromFontFace(IDWriteFontFace*, IDWriteFont**) {
    return unexpected("GetFontFromFontFace");
}

// ---- face ----

HRESULT Face::GetGlyphRunOutline(FLOAT emSize, const UINT16* glyphIndices, const FLOAT* glyphAdvances,
                                 const DWRITE_GLYPH_OFFSET* glyphOffsets, UINT32 glyphCount, BOOL isSideways,
                                 BOOL isRightToLeft, IDWriteGeometrySink* geometrySink) {
    return record("Face.GetGlyphRunOutline", emSize, array(glyphIndices, glyphCount), array(glyphAdvances, glyphCount),
                  array(glyphOffsets, glyphCount), isSideways, isRightToLeft, geometrySink ? "Sink" : "null");
}

DWRITE_FONT_SIMULATIONS Face::GetSimulations() {
    unexpected("Face.GetSimulations");
    return DWRITE_FONT_SIMULATIONS_NONE;
}
void Face::GetMetrics(DWRITE_FONT_METRICS*) {
    unexpected("Face.GetMetrics");
}
UINT16 Face::GetGlyphCount() {
    unexpected("GetGlyphCount");
    return 0;
}
HRESULT Face::GetDesignGlyphMetrics(const UINT16*, UINT32, DWRITE_GLYPH_METRICS*, BOOL) {
    return unexpected("GetDesignGlyphMetrics");
}
HRESULT Face::GetGlyphIndices(const UINT32*, UINT32, UINT16*) {
    return unexpected("GetGlyphIndices");
}

} // namespace fake
