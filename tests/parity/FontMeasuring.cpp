#include "Measuring.h"

#include <dwrite.h>

#include <map>
#include <string>
#include <vector>

#include <Common/Utf.h>
#include <FontEngine/FontUtils.h>
#include <oslayer/checkHResult.h>
#include <oslayer/com_ptr.h>

namespace parity {

namespace {

using oslayer::com_ptr;

com_ptr<IDWriteFontCollection> systemFonts() {
    com_ptr<IUnknown> unknown;
    OSLAYER_CHECK(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &unknown));
    com_ptr<IDWriteFactory> factory;
    factory.queryFrom(unknown);
    com_ptr<IDWriteFontCollection> collection;
    OSLAYER_CHECK(factory->GetSystemFontCollection(&collection));
    return collection;
}

std::wstring stringAt(IDWriteLocalizedStrings* strings, UINT32 index) {
    UINT32 length = 0;
    OSLAYER_CHECK(strings->GetStringLength(index, &length));
    std::wstring text(length + 1, L'\0');
    OSLAYER_CHECK(strings->GetString(index, text.data(), length + 1));
    text.resize(length);
    return text;
}

// The name in American English, else the first one.
std::wstring englishName(IDWriteLocalizedStrings* strings) {
    UINT32 index = 0;
    BOOL exists = FALSE;
    OSLAYER_CHECK(strings->FindLocaleName(L"en-us", &index, &exists));
    return stringAt(strings, exists ? index : 0);
}

std::wstring win32Name(IDWriteFont* font) {
    com_ptr<IDWriteLocalizedStrings> names;
    BOOL exists = FALSE;
    OSLAYER_CHECK(font->GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES, &names, &exists));
    return exists ? englishName(names) : std::wstring();
}

// Faces that differ in nothing that a caller can ask for have equal keys.
std::string keyOf(IDWriteFont* font) {
    return "weight " + std::to_string(font->GetWeight()) + " style " + std::to_string(font->GetStyle()) + " stretch " +
           std::to_string(font->GetStretch()) + " simulations " + std::to_string(font->GetSimulations()) + " of " +
           common::utf8FromWide(win32Name(font));
}

void measureFont(JsonWriter& json, IDWriteFont* font) {
    com_ptr<IDWriteLocalizedStrings> faceNames;
    OSLAYER_CHECK(font->GetFaceNames(&faceNames));
    json.write("face name", common::utf8FromWide(englishName(faceNames)));
    DWRITE_FONT_METRICS metrics{};
    font->GetMetrics(&metrics);
    json.write("metrics.designUnitsPerEm", metrics.designUnitsPerEm);
    json.write("metrics.ascent", metrics.ascent);
    json.write("metrics.descent", metrics.descent);
    json.write("metrics.lineGap", metrics.lineGap);
    json.write("metrics.capHeight", metrics.capHeight);
    json.write("metrics.xHeight", metrics.xHeight);
    json.write("metrics.underlinePosition", metrics.underlinePosition);
    json.write("metrics.underlineThickness", metrics.underlineThickness);
    json.write("metrics.strikethroughPosition", metrics.strikethroughPosition);
    json.write("metrics.strikethroughThickness", metrics.strikethroughThickness);
}

std::wstring measureFamily(JsonWriter& json, IDWriteFontFamily* family) {
    com_ptr<IDWriteLocalizedStrings> names;
    OSLAYER_CHECK(family->GetFamilyNames(&names));
    const std::wstring name = englishName(names);
    json.beginObject(common::utf8FromWide(name));
    json.write("first name", common::utf8FromWide(stringAt(names, 0)));
    json.write("names", static_cast<double>(names->GetCount()));
    json.write("fonts", static_cast<double>(family->GetFontCount()));
    std::map<std::string, int> seen;
    for (UINT32 i = 0; i < family->GetFontCount(); ++i) {
        com_ptr<IDWriteFont> font;
        OSLAYER_CHECK(family->GetFont(i, &font));
        std::string key = keyOf(font);
        if (const int count = seen[key]++; count > 0) {
            key += " again " + std::to_string(count);
        }
        json.beginObject(key);
        measureFont(json, font);
        json.end();
    }
    json.end();
    return name;
}

void measureFound(JsonWriter& json, fonts::IFontEngine& engine, const std::vector<std::wstring>& names) {
    for (const std::wstring& name : names) {
        json.beginObject(common::utf8FromWide(name));
        for (const bool bold : {false, true}) {
            for (const bool italic : {false, true}) {
                fonts::IFont* font = engine.getFont(name, fonts::weightFromBool(bold), fonts::styleFromBool(italic));
                const std::string style = std::string(bold ? "bold " : "") + (italic ? "italic " : "");
                json.write(style + "family", common::utf8FromWide(font->fontFamily().c_str()));
                json.write(style + "em of capitals of 1", font->capitalLetterSizeToFontSize(1.0));
                const fonts::SFontMetrics metrics = font->metricsByCapitalLetterSize(1.0);
                json.write(style + "ascent", metrics.ascent);
                json.write(style + "descent", metrics.descent);
                json.write(style + "lineGap", metrics.lineGap);
            }
        }
        json.end();
    }
}

} // namespace

void measureFonts(JsonWriter& json, fonts::IFontEngine& engine) {
    const com_ptr<IDWriteFontCollection> collection = systemFonts();
    std::vector<std::wstring> names;
    json.beginObject("families");
    for (UINT32 i = 0; i < collection->GetFontFamilyCount(); ++i) {
        com_ptr<IDWriteFontFamily> family;
        OSLAYER_CHECK(collection->GetFontFamily(i, &family));
        names.push_back(measureFamily(json, family));
    }
    json.end();
    for (const wchar_t* name : {L"Liberation Sans Narrow", L"DejaVu Sans Condensed", L"DejaVu Sans Light",
                                L"Noto Sans Light", L"Noto Serif Condensed", L"No Such Family"}) {
        names.emplace_back(name);
    }
    json.beginObject("found");
    measureFound(json, engine, names);
    json.end();
}

} // namespace parity
