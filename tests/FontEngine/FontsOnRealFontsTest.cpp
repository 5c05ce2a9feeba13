#include <FontEngine/FontUtils.h>
#include <FontEngine/IFontEngine.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Common/Utf.h>

#include "RecordedFonts.h"
#include "SystemCollection.h"

using fonts::Style;
using fonts::Weight;

namespace {

// The font of a Win32 family name, found within its DirectWrite family.
oslayer::com_ptr<IDWriteFont> findFont(const wchar_t* dwriteFamily, const wchar_t* win32Family, Weight weight,
                                       Style style) {
    const auto collection = systemCollection();
    UINT32 index = 0;
    BOOL exists = FALSE;
    collection->FindFamilyName(dwriteFamily, &index, &exists);
    if (!exists)
        return {};
    oslayer::com_ptr<IDWriteFontFamily> family;
    collection->GetFontFamily(index, &family);
    return fonts::findDWriteFontInFamily(family, win32Family, weight, style);
}

} // namespace

TEST(FontsOnRealFonts, MetricsAreThoseOfTheFontFiles) {
    expectRecordedMetrics("font-metrics.tsv", 12);
}

TEST(FontsOnRealFonts, FamilyIsTheOneThatTheFontBelongsToWhateverItWasAskedForAs) {
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    const auto familyOf = [&](const wchar_t* name) {
        return std::wstring(engine->getFont(name, Weight::Normal, Style::Normal)->fontFamily().c_str());
    };
    EXPECT_EQ(familyOf(L"Liberation Sans"), L"Liberation Sans");
    EXPECT_EQ(familyOf(L"Liberation Sans Narrow"), L"Liberation Sans");
    EXPECT_EQ(familyOf(L"DejaVu Sans Condensed"), L"DejaVu Sans");
    EXPECT_EQ(familyOf(L"DejaVu Sans Light"), L"DejaVu Sans");
    EXPECT_EQ(familyOf(L"Noto Sans CJK JP"), L"Noto Sans CJK JP");
}

TEST(FontsOnRealFonts, UnknownFamilyAndOtherLetterCaseGetTheFallbackFont) {
    const auto engine = fonts::createFontEngine(L"Liberation Serif");
    fonts::IFont* fallback = engine->getFallbackFont();
    EXPECT_STREQ(fallback->fontFamily().c_str(), L"Liberation Serif");
    EXPECT_EQ(engine->getFont(L"No Such Family", Weight::Normal, Style::Normal), fallback);
    EXPECT_EQ(engine->getFont(L"liberation sans", Weight::Normal, Style::Normal), fallback);
    EXPECT_EQ(engine->getFont(L"", Weight::Normal, Style::Normal), fallback);
}

TEST(FontsOnRealFonts, MissingFallbackFamilyGivesTheFirstFontOfTheCollection) {
    const auto collection = systemCollection();
    oslayer::com_ptr<IDWriteFontFamily> first;
    ASSERT_EQ(collection->GetFontFamily(0, &first), S_OK);
    oslayer::com_ptr<IDWriteLocalizedStrings> names;
    ASSERT_EQ(first->GetFamilyNames(&names), S_OK);
    WCHAR name[256]{};
    ASSERT_EQ(names->GetString(0, name, 256), S_OK);
    const auto engine = fonts::createFontEngine(L"No Such Family");
    EXPECT_STREQ(engine->getFallbackFont()->fontFamily().c_str(), name);
}

TEST(FontsOnRealFonts, ItalicOfAFamilyThatHasOnlyObliquesIsTheRealOblique) {
    const auto font = findFont(L"DejaVu Sans", L"DejaVu Sans", Weight::Bold, Style::Italic);
    ASSERT_TRUE(font);
    EXPECT_EQ(font->GetStyle(), DWRITE_FONT_STYLE_OBLIQUE);
    EXPECT_EQ(font->GetWeight(), DWRITE_FONT_WEIGHT_BOLD);
    EXPECT_EQ(font->GetSimulations(), DWRITE_FONT_SIMULATIONS_NONE);
}

TEST(FontsOnRealFonts, ItalicOfAFamilyThatHasOneIsThatItalic) {
    const auto font = findFont(L"Liberation Sans", L"Liberation Sans", Weight::Normal, Style::Italic);
    ASSERT_TRUE(font);
    EXPECT_EQ(font->GetStyle(), DWRITE_FONT_STYLE_ITALIC);
    EXPECT_EQ(font->GetWeight(), DWRITE_FONT_WEIGHT_NORMAL);
    EXPECT_EQ(font->GetSimulations(), DWRITE_FONT_SIMULATIONS_NONE);
}

TEST(FontsOnRealFonts, NarrowFacesAreFoundUnderTheirOwnName) {
    const auto font = findFont(L"Liberation Sans", L"Liberation Sans Narrow", Weight::Normal, Style::Normal);
    ASSERT_TRUE(font);
    EXPECT_NE(font->GetStretch(), DWRITE_FONT_STRETCH_NORMAL);
    EXPECT_FALSE(findFont(L"DejaVu Sans", L"Liberation Sans Narrow", Weight::Normal, Style::Normal));
}

TEST(FontsOnRealFonts, EveryWin32NameOfAFontFindsAFontOfItsFamily) {
    const auto collection = systemCollection();
    std::size_t asked = 0;
    for (UINT32 i = 0; i < collection->GetFontFamilyCount(); ++i) {
        oslayer::com_ptr<IDWriteFontFamily> family;
        ASSERT_EQ(collection->GetFontFamily(i, &family), S_OK);
        oslayer::com_ptr<IDWriteFont> font;
        ASSERT_EQ(family->GetFont(0, &font), S_OK);
        oslayer::com_ptr<IDWriteLocalizedStrings> names;
        BOOL exists = FALSE;
        ASSERT_EQ(font->GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES, &names, &exists), S_OK);
        ASSERT_TRUE(exists);
        for (UINT32 index = 0; index < names->GetCount(); ++index) {
            WCHAR name[256]{};
            ASSERT_EQ(names->GetString(index, name, 256), S_OK);
            EXPECT_TRUE(fonts::findDWriteFontInFamily(family, name, Weight::Normal, Style::Normal));
            ++asked;
        }
    }
    EXPECT_GE(asked, collection->GetFontFamilyCount());
    EXPECT_GT(asked, 100u);
}
