#include "FontsCommand.h"

#include <dwrite.h>

#include <cstdio>
#include <string>
#include <vector>

#include <Common/Utf.h>
#include <oslayer/checkHResult.h>
#include <oslayer/com_ptr.h>

namespace tool {

namespace {

using oslayer::com_ptr;

com_ptr<IDWriteFontCollection> systemFonts() {
    com_ptr<IDWriteFactory> factory;
    OSLAYER_CHECK(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory),
                                      reinterpret_cast<IUnknown**>(&factory)));
    com_ptr<IDWriteFontCollection> collection;
    OSLAYER_CHECK(factory->GetSystemFontCollection(&collection));
    return collection;
}

// The string at index 0, which is the English one where there is one first.
std::string firstString(IDWriteLocalizedStrings* strings) {
    UINT32 length = 0;
    OSLAYER_CHECK(strings->GetStringLength(0, &length));
    std::wstring text(length + 1, L'\0');
    OSLAYER_CHECK(strings->GetString(0, text.data(), length + 1));
    text.resize(length);
    return common::utf8FromWide(text);
}

std::string familyName(IDWriteFontFamily* family) {
    com_ptr<IDWriteLocalizedStrings> names;
    OSLAYER_CHECK(family->GetFamilyNames(&names));
    return firstString(names);
}

std::string win32Name(IDWriteFont* font) {
    com_ptr<IDWriteLocalizedStrings> names;
    BOOL exists = FALSE;
    OSLAYER_CHECK(font->GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES, &names, &exists));
    return exists ? firstString(names) : std::string();
}

const char* styleName(DWRITE_FONT_STYLE style) {
    switch (style) {
    case DWRITE_FONT_STYLE_OBLIQUE:
        return "oblique";
    case DWRITE_FONT_STYLE_ITALIC:
        return "italic";
    default:
        return "upright";
    }
}

void printFont(IDWriteFont* font) {
    com_ptr<IDWriteLocalizedStrings> faceNames;
    OSLAYER_CHECK(font->GetFaceNames(&faceNames));
    DWRITE_FONT_METRICS metrics{};
    font->GetMetrics(&metrics);
    std::printf("  %-28s weight %3d, stretch %d, %-7s  capitals %u of %u%s  asked for as \"%s\"\n",
                firstString(faceNames).c_str(), static_cast<int>(font->GetWeight()),
                static_cast<int>(font->GetStretch()), styleName(font->GetStyle()), unsigned{metrics.capHeight},
                unsigned{metrics.designUnitsPerEm},
                font->GetSimulations() == DWRITE_FONT_SIMULATIONS_NONE ? "" : ", simulated", win32Name(font).c_str());
}

std::vector<com_ptr<IDWriteFont>> fontsOf(IDWriteFontFamily* family) {
    std::vector<com_ptr<IDWriteFont>> fonts(family->GetFontCount());
    for (UINT32 i = 0; i < fonts.size(); ++i) {
        OSLAYER_CHECK(family->GetFont(i, &fonts[i]));
    }
    return fonts;
}

bool matches(IDWriteFontFamily* family, const std::vector<com_ptr<IDWriteFont>>& fonts, const std::string& name) {
    if (familyName(family) == name) {
        return true;
    }
    for (const com_ptr<IDWriteFont>& font : fonts) {
        if (win32Name(font) == name) {
            return true;
        }
    }
    return false;
}

} // namespace

ExitCode runFonts(const FontsOptions& options) {
    const com_ptr<IDWriteFontCollection> collection = systemFonts();
    bool found = false;
    for (UINT32 i = 0; i < collection->GetFontFamilyCount(); ++i) {
        com_ptr<IDWriteFontFamily> family;
        OSLAYER_CHECK(collection->GetFontFamily(i, &family));
        const std::vector<com_ptr<IDWriteFont>> fonts = fontsOf(family);
        if (!options.family) {
            std::printf("%s (%zu)\n", familyName(family).c_str(), fonts.size());
            found = true;
        } else if (matches(family, fonts, *options.family)) {
            std::printf("%s\n", familyName(family).c_str());
            for (const com_ptr<IDWriteFont>& font : fonts) {
                printFont(font);
            }
            found = true;
        }
    }
    if (!found) {
        throw InputError(options.family ? "no font of the family \"" + *options.family +
                                              "\" is installed; \"fontengine fonts\" lists those that are"
                                        : std::string("no fonts are installed; install some (on Debian: apt-get "
                                                      "install fonts-dejavu-core)"));
    }
    return ExitCode::Success;
}

} // namespace tool
