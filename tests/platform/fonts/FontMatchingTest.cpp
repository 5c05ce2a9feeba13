#include "support/Fonts.h"

#include <gtest/gtest.h>

namespace platform::test {
namespace {

using oslayer::com_ptr;

struct Case {
    const wchar_t* family;
    int weight;
    int stretch;
    int style;
    const wchar_t* expected;
};

std::wstring matched(const wchar_t* familyName, int weight, int stretch, int style) {
    com_ptr<IDWriteFont> found;
    EXPECT_EQ(family(familyName)
                  .GetFirstMatchingFont(static_cast<DWRITE_FONT_WEIGHT>(weight),
                                        static_cast<DWRITE_FONT_STRETCH>(stretch),
                                        static_cast<DWRITE_FONT_STYLE>(style), &found),
              S_OK);
    return textAt(*faceNames(*found), 0);
}

TEST(FontMatching, ComesClosestInStretchThenStyleThenWeight) {
    const Case cases[] = {
        {L"DejaVu Sans", 400, 5, 0, L"Book"},
        {L"DejaVu Sans", 700, 5, 0, L"Bold"},
        // An oblique stands in for the italic that is missing.
        {L"DejaVu Sans", 400, 5, 2, L"Oblique"},
        {L"DejaVu Sans", 700, 5, 2, L"Bold Oblique"},
        // Where there is an italic, an oblique is still preferred to it by who asks for one.
        {L"DejaVu Serif", 400, 5, 2, L"Italic"},
        {L"DejaVu Serif", 400, 5, 1, L"Oblique"},
        {L"DejaVu Sans", 600, 5, 0, L"Bold"},
        {L"DejaVu Sans", 500, 5, 0, L"Book"},
        {L"DejaVu Sans", 100, 5, 0, L"ExtraLight"},
        {L"DejaVu Sans", 200, 5, 0, L"ExtraLight"},
        {L"DejaVu Sans", 300, 5, 0, L"ExtraLight"},
        {L"DejaVu Sans", 900, 5, 0, L"Bold"},
        {L"DejaVu Sans", 400, 3, 0, L"Condensed"},
        {L"DejaVu Sans", 400, 4, 0, L"Condensed"},
        {L"DejaVu Sans", 400, 1, 0, L"Condensed"},
        {L"DejaVu Sans", 400, 7, 0, L"Book"},
        {L"DejaVu Sans", 400, 9, 0, L"Book"},
        {L"Liberation Sans", 700, 3, 2, L"Narrow Bold Italic"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(matched(c.family, c.weight, c.stretch, c.style), c.expected)
            << c.weight << " " << c.stretch << " " << c.style;
    }
}

TEST(FontMatching, StyleDecidesBeforeWeightEvenForABoldItalic) {
    // The family has an italic in light only; the bold that leans is simulated, and no italic.
    CFontFamily& slopes = dataFont("Slopes-Regular.ttf").family();
    const auto find = [&slopes](int weight, DWRITE_FONT_STYLE style) {
        return textAt(
            *faceNames(slopes.match(static_cast<DWRITE_FONT_WEIGHT>(weight), DWRITE_FONT_STRETCH_NORMAL, style)), 0);
    };
    EXPECT_EQ(find(700, DWRITE_FONT_STYLE_ITALIC), L"Light Italic");
    EXPECT_EQ(find(400, DWRITE_FONT_STYLE_ITALIC), L"Light Italic");
    EXPECT_EQ(find(700, DWRITE_FONT_STYLE_OBLIQUE), L"Bold Oblique");
    EXPECT_EQ(find(400, DWRITE_FONT_STYLE_OBLIQUE), L"Oblique");
    EXPECT_EQ(find(300, DWRITE_FONT_STYLE_NORMAL), L"Regular");
}

TEST(FontMatching, ABoldItalicIsABoldThatLeansWhereNothingIsItalic) {
    CFont& found = font(L"Noto Sans Devanagari", DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STYLE_ITALIC);
    EXPECT_EQ(found.weight(), 700);
    EXPECT_EQ(found.style(), DWRITE_FONT_STYLE_OBLIQUE);
    EXPECT_EQ(found.simulations(), DWRITE_FONT_SIMULATIONS_OBLIQUE);
}

TEST(FontMatching, ValuesOutOfRangeFindSomething) {
    EXPECT_EQ(matched(L"DejaVu Sans", 0, 0, 0), L"ExtraLight");
    EXPECT_EQ(matched(L"DejaVu Sans", 5000, 0, 0), L"Bold");
    EXPECT_EQ(matched(L"DejaVu Sans", -5, -1, -1), L"ExtraLight");
    EXPECT_EQ(matched(L"DejaVu Sans", 400, 100, 77), L"Book");
    EXPECT_EQ(matched(L"DejaVu Sans", 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF), L"Bold");
}

TEST(FontMatching, AskingAgainFindsTheSame) {
    CFontFamily& sans = family(L"DejaVu Sans");
    for (int round = 0; round < 2; ++round) {
        for (int weight = 1; weight < 1000; weight += 7) {
            const DWRITE_FONT_WEIGHT asked = static_cast<DWRITE_FONT_WEIGHT>(weight);
            const CFont& found = sans.match(asked, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_NORMAL);
            const int expected = weight < 400 ? 200 : weight <= 500 ? 400 : 700;
            EXPECT_EQ(found.weight(), expected) << weight;
        }
    }
}

TEST(FontMatching, MatchingFontsAreAllFontsTheBestFirst) {
    CFontFamily& sans = family(L"DejaVu Sans");
    com_ptr<IDWriteFontList> list;
    ASSERT_EQ(
        sans.GetMatchingFonts(DWRITE_FONT_WEIGHT_BOLD, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_ITALIC, &list),
        S_OK);
    ASSERT_EQ(list->GetFontCount(), sans.GetFontCount());
    std::vector<std::wstring> names;
    for (UINT32 i = 0; i < list->GetFontCount(); ++i) {
        com_ptr<IDWriteFont> font;
        ASSERT_EQ(list->GetFont(i, &font), S_OK);
        names.push_back(textAt(*faceNames(*font), 0));
    }
    // Style decides before weight; narrower fonts come last.
    const std::vector<std::wstring> expected = {
        L"Bold Oblique",           L"Oblique",           L"ExtraLight Oblique", L"Bold",     L"Book", L"ExtraLight",
        L"Condensed Bold Oblique", L"Condensed Oblique", L"Condensed Bold",     L"Condensed"};
    EXPECT_EQ(names, expected);
    auto* none = reinterpret_cast<IDWriteFont*>(1);
    EXPECT_EQ(list->GetFont(list->GetFontCount(), &none), E_FAIL);
    EXPECT_EQ(none, nullptr);
    com_ptr<IDWriteFontCollection> collection;
    EXPECT_EQ(list->GetFontCollection(&collection), S_OK);
    EXPECT_EQ(static_cast<IDWriteFontCollection*>(collection), &CFontCollection::system());
}

} // namespace
} // namespace platform::test
