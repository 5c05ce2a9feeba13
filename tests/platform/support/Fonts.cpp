#include "support/Fonts.h"

#include "fonts/FontSet.h"

#include <Common/Utf.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace platform::test {

CFontFamily& family(const std::wstring& name) {
    CFontFamily* const found = CFontCollection::system().findFamily(name);
    if (found == nullptr) {
        throw std::runtime_error("no family " + common::utf8FromWide(name));
    }
    return *found;
}

CFont& font(const std::wstring& familyName, DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STYLE style,
            DWRITE_FONT_STRETCH stretch) {
    return family(familyName).match(weight, stretch, style);
}

CFont& fontOfFile(const std::string& file, int index) {
    const std::string path = std::string(FONTENGINE_TEST_FONTS) + "/" + file;
    CFont* const found = CFontCollection::system().fontOfFile(path, index);
    if (found == nullptr) {
        throw std::runtime_error("no font " + path);
    }
    return *found;
}

std::string dataPath(const std::string& name) {
    return std::string(FONTENGINE_TEST_DATA) + "/platform/fonts/data/" + name;
}

std::vector<std::vector<std::string>> readTable(const std::string& name) {
    std::ifstream file(dataPath(name));
    if (!file) {
        throw std::runtime_error("cannot read " + dataPath(name));
    }
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        std::istringstream stream(line);
        std::vector<std::string> row;
        for (std::string field; std::getline(stream, field, '\t');) {
            row.push_back(field);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

CFontCollection& dataCollection() {
    // Interned objects live as long as the process.
    static auto& collection = *new CFontCollection(FontSet{{{dataPath("Cff.otf"), 0},
                                                            {dataPath("Cff2.otf"), 0},
                                                            {dataPath("Cff2.otf"), 2 << 16},
                                                            {dataPath("Collection.ttc"), 0},
                                                            {dataPath("Collection.ttc"), 1},
                                                            {dataPath("AcrossSpaces.ttf"), 0},
                                                            {dataPath("NoLetters.ttf"), 0},
                                                            {dataPath("NoOs2.ttf"), 0},
                                                            {dataPath("Russian.ttf"), 0},
                                                            {dataPath("Slopes-Bold.ttf"), 0},
                                                            {dataPath("Slopes-LightItalic.ttf"), 0},
                                                            {dataPath("Slopes-Regular.ttf"), 0},
                                                            {dataPath("Variable.ttf"), 0},
                                                            {dataPath("Variable.ttf"), 2 << 16},
                                                            {dataPath("Variable.ttf"), 3 << 16},
                                                            {dataPath("Words.ttf"), 0},
                                                            {dataPath("Wws.ttf"), 0}}});
    return collection;
}

CFont& dataFont(const std::string& name, int index) {
    CFont* const found = dataCollection().fontOfFile(dataPath(name), index);
    if (found == nullptr) {
        throw std::runtime_error("no font " + name);
    }
    return *found;
}

std::array<int, 10> listed(const DWRITE_FONT_METRICS& metrics) {
    return {metrics.designUnitsPerEm,
            metrics.ascent,
            metrics.descent,
            metrics.lineGap,
            metrics.capHeight,
            metrics.xHeight,
            metrics.underlinePosition,
            metrics.underlineThickness,
            metrics.strikethroughPosition,
            metrics.strikethroughThickness};
}

std::wstring textAt(IDWriteLocalizedStrings& strings, std::uint32_t index) {
    std::uint32_t length = 0;
    if (FAILED(strings.GetStringLength(index, &length))) {
        throw std::out_of_range("no string at this index");
    }
    std::wstring text(length + 1, L'?');
    strings.GetString(index, text.data(), length + 1);
    text.resize(length);
    return text;
}

std::wstring localeAt(IDWriteLocalizedStrings& strings, std::uint32_t index) {
    std::uint32_t length = 0;
    if (FAILED(strings.GetLocaleNameLength(index, &length))) {
        throw std::out_of_range("no string at this index");
    }
    std::wstring text(length + 1, L'?');
    strings.GetLocaleName(index, text.data(), length + 1);
    text.resize(length);
    return text;
}

std::vector<std::wstring> listed(IDWriteLocalizedStrings& strings) {
    std::vector<std::wstring> all;
    for (std::uint32_t i = 0; i < strings.GetCount(); ++i) {
        all.push_back(localeAt(strings, i) + L"=" + textAt(strings, i));
    }
    return all;
}

oslayer::com_ptr<IDWriteLocalizedStrings> informationalStrings(IDWriteFont& font, DWRITE_INFORMATIONAL_STRING_ID id) {
    oslayer::com_ptr<IDWriteLocalizedStrings> strings;
    BOOL exists = FALSE;
    font.GetInformationalStrings(id, &strings, &exists);
    return strings;
}

oslayer::com_ptr<IDWriteLocalizedStrings> faceNames(IDWriteFont& font) {
    oslayer::com_ptr<IDWriteLocalizedStrings> names;
    font.GetFaceNames(&names);
    return names;
}

oslayer::com_ptr<IDWriteLocalizedStrings> familyNames(IDWriteFontFamily& family) {
    oslayer::com_ptr<IDWriteLocalizedStrings> names;
    family.GetFamilyNames(&names);
    return names;
}

} // namespace platform::test
