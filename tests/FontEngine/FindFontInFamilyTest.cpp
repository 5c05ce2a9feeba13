#include <FontEngine/FontUtils.h>

#include <gmock/gmock.h>

#include <oslayer/Errors.h>

#include "SystemCollection.h"
#include "fake/FakePlatform.h"

using fonts::Style;
using fonts::Weight;
using testing::ElementsAre;

namespace {

struct FindFontInFamilyTest : fake::FakePlatformTest {
    FindFontInFamilyTest() { fake::platform().families = {{{L"Grotesk"}, {}}}; }

    void addFace(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STYLE style,
                 DWRITE_FONT_STRETCH stretch = DWRITE_FONT_STRETCH_NORMAL,
                 std::vector<std::wstring> names = {L"Grotesk"}) {
        fake::FontSpec face;
        face.weight = weight;
        face.style = style;
        face.stretch = stretch;
        face.win32FamilyNames = std::move(names);
        fake::platform().families.front().fonts.push_back(face);
    }

    static oslayer::com_ptr<IDWriteFontFamily> family() {
        const oslayer::com_ptr<IDWriteFontCollection> collection = systemCollection();
        oslayer::com_ptr<IDWriteFontFamily> family;
        collection->GetFontFamily(0, &family);
        fake::platform().calls.clear();
        return family;
    }

    // The place of the font found in its family; -1: none.
    static int find(Weight weight, Style style, const std::wstring& name = L"Grotesk") {
        const auto within = family();
        const auto found = fonts::findDWriteFontInFamily(within, name, weight, style);
        const std::size_t asked = fake::platform().calls.size();
        for (UINT32 i = 0; i < within->GetFontCount(); ++i) {
            oslayer::com_ptr<IDWriteFont> font;
            within->GetFont(i, &font);
            if (font.get() == found.get()) {
                fake::platform().calls.resize(asked);
                return static_cast<int>(i);
            }
        }
        fake::platform().calls.resize(asked);
        return -1;
    }
};

struct FailingCall {
    const char* call;
    const char* expression;
};

void PrintTo(const FailingCall& failing, std::ostream* out) {
    *out << failing.call;
}

struct FailingFindFontTest : FindFontInFamilyTest, testing::WithParamInterface<FailingCall> {};

using FindFontInFamilyDeathTest = FindFontInFamilyTest;

constexpr auto regular = DWRITE_FONT_WEIGHT_NORMAL;
constexpr auto bold = DWRITE_FONT_WEIGHT_BOLD;
constexpr auto upright = DWRITE_FONT_STYLE_NORMAL;
constexpr auto oblique = DWRITE_FONT_STYLE_OBLIQUE;
constexpr auto italic = DWRITE_FONT_STYLE_ITALIC;

} // namespace

TEST_F(FindFontInFamilyTest, ExactFaceIsFoundAndTheRestNotLookedAt) {
    addFace(regular, upright);
    addFace(bold, upright);
    addFace(bold, italic);
    EXPECT_EQ(find(Weight::Bold, Style::Normal), 1);
    EXPECT_THAT(fake::platform().calls,
                ElementsAre("Family.GetFontCount()", "Family.GetFont(0)", "Font.GetInformationalStrings(11)",
                            "Win32Names.GetStringLength(0)", "Win32Names.GetString(0, 8)", "Family.GetFont(1)",
                            "Font.GetInformationalStrings(11)", "Win32Names.GetStringLength(0)",
                            "Win32Names.GetString(0, 8)"));
}

TEST_F(FindFontInFamilyTest, ObliqueStandsInForAMissingItalic) {
    addFace(regular, upright);
    addFace(bold, upright);
    addFace(regular, oblique);
    EXPECT_EQ(find(Weight::Normal, Style::Italic), 2);
}

TEST_F(FindFontInFamilyTest, BoldItalicIsTheFirstNamedFaceUnlessThereIsABoldOblique) {
    addFace(regular, upright);
    addFace(bold, upright);
    addFace(regular, oblique);
    EXPECT_EQ(find(Weight::Bold, Style::Italic), 0);
}

TEST_F(FindFontInFamilyTest, BoldObliqueStandsInForAMissingBoldItalic) {
    addFace(regular, upright);
    addFace(regular, oblique);
    addFace(bold, oblique);
    EXPECT_EQ(find(Weight::Bold, Style::Italic), 2);
}

TEST_F(FindFontInFamilyTest, LaterObliqueReplacesAnEarlierOne) {
    addFace(regular, oblique);
    addFace(DWRITE_FONT_WEIGHT_LIGHT, oblique);
    EXPECT_EQ(find(Weight::Normal, Style::Italic), 1);
}

TEST_F(FindFontInFamilyTest, ACondensedItalicDoesNotStandInForAnItalic) {
    addFace(bold, upright);
    addFace(regular, italic, DWRITE_FONT_STRETCH_CONDENSED);
    EXPECT_EQ(find(Weight::Normal, Style::Italic), 0);
}

TEST_F(FindFontInFamilyTest, ItalicAfterAnObliqueIsStillTheExactFace) {
    addFace(regular, oblique);
    addFace(regular, italic);
    EXPECT_EQ(find(Weight::Normal, Style::Italic), 1);
}

TEST_F(FindFontInFamilyTest, ObliqueCountsAsUprightWhenUprightIsAskedFor) {
    addFace(bold, upright);
    addFace(regular, oblique);
    EXPECT_EQ(find(Weight::Normal, Style::Normal), 1);
}

TEST_F(FindFontInFamilyTest, CondensedFaceIsNoExactMatch) {
    addFace(bold, italic);
    addFace(regular, upright, DWRITE_FONT_STRETCH_CONDENSED);
    EXPECT_EQ(find(Weight::Normal, Style::Normal), 0);
}

TEST_F(FindFontInFamilyTest, SemiBoldIsFoundWhenNormalWeightIsAskedFor) {
    addFace(bold, upright);
    addFace(DWRITE_FONT_WEIGHT_SEMI_BOLD, upright);
    EXPECT_EQ(find(Weight::Normal, Style::Normal), 1);
}

TEST_F(FindFontInFamilyTest, NameInAnotherLanguageMatches) {
    addFace(regular, upright, DWRITE_FONT_STRETCH_NORMAL, {L"Grotesk", L"Гротеск", L"格羅泰斯克"});
    EXPECT_EQ(find(Weight::Normal, Style::Normal, L"格羅泰斯克"), 0);
    EXPECT_THAT(fake::platform().callsTo("Win32Names.GetString("),
                ElementsAre("Win32Names.GetString(0, 8)", "Win32Names.GetString(1, 8)", "Win32Names.GetString(2, 6)"));
}

TEST_F(FindFontInFamilyTest, ExactFaceEndsTheSearchAtTheNameThatMatches) {
    addFace(regular, upright, DWRITE_FONT_STRETCH_NORMAL, {L"Grotesk", L"Гротеск"});
    EXPECT_EQ(find(Weight::Normal, Style::Normal), 0);
    EXPECT_THAT(fake::platform().callsTo("Win32Names.GetString("), ElementsAre("Win32Names.GetString(0, 8)"));
}

TEST_F(FindFontInFamilyTest, EveryNameOfACandidateIsRead) {
    addFace(bold, upright, DWRITE_FONT_STRETCH_NORMAL, {L"Grotesk", L"Гротеск"});
    EXPECT_EQ(find(Weight::Normal, Style::Normal), 0);
    EXPECT_THAT(fake::platform().callsTo("Win32Names.GetString("),
                ElementsAre("Win32Names.GetString(0, 8)", "Win32Names.GetString(1, 8)"));
}

TEST_F(FindFontInFamilyTest, ANameThatCannotBeReadIsReportedThoughAnEarlierOneMatched) {
    addFace(bold, upright, DWRITE_FONT_STRETCH_NORMAL, {L"Grotesk", L"Гротеск"});
    fake::platform().fail("Win32Names.GetString(1", E_FAIL);
    const auto within = family();
    EXPECT_THROW(fonts::findDWriteFontInFamily(within, L"Grotesk", Weight::Normal, Style::Normal),
                 oslayer::EOsLayerError);
    EXPECT_EQ(log.expression(), "pFamilyNames->GetString(index, &name[0], stringLength + 1)");
}

TEST_F(FindFontInFamilyTest, NameInOtherLetterCaseGivesNothing) {
    addFace(regular, upright);
    EXPECT_EQ(find(Weight::Normal, Style::Normal, L"GROTESK"), -1);
    EXPECT_EQ(find(Weight::Normal, Style::Normal, L"Grotes"), -1);
    EXPECT_EQ(find(Weight::Normal, Style::Normal, L"Grotesk "), -1);
}

TEST_F(FindFontInFamilyTest, NameIsComparedToItsFullLength) {
    addFace(regular, upright, DWRITE_FONT_STRETCH_NORMAL, {std::wstring(L"Gro\0tesk", 8)});
    EXPECT_EQ(find(Weight::Normal, Style::Normal, L"Gro"), -1);
    EXPECT_EQ(find(Weight::Normal, Style::Normal, std::wstring(L"Gro\0tesk", 8)), 0);
}

TEST_F(FindFontInFamilyTest, FontsOfOtherNamesOrWithoutNamesAreSkipped) {
    addFace(regular, upright, DWRITE_FONT_STRETCH_NORMAL, {L"Grotesk Light"});
    addFace(regular, upright, DWRITE_FONT_STRETCH_NORMAL, {});
    addFace(bold, italic);
    EXPECT_EQ(find(Weight::Normal, Style::Normal), 2);
}

TEST_F(FindFontInFamilyTest, FamilyWithoutFontsGivesNothing) {
    EXPECT_EQ(find(Weight::Normal, Style::Normal), -1);
}

TEST_F(FindFontInFamilyDeathTest, NullFamilyEndsTheProcess) {
    EXPECT_DEATH(fonts::findDWriteFontInFamily(nullptr, L"Grotesk", Weight::Normal, Style::Normal), "terminate called");
}

TEST_P(FailingFindFontTest, FailureIsReportedAndEverythingGivenBack) {
    // The first face is a candidate already when the second one fails.
    addFace(bold, upright);
    addFace(regular, upright);
    fake::platform().fail(GetParam().call, E_FAIL, 2);
    {
        const auto within = family();
        EXPECT_THROW(fonts::findDWriteFontInFamily(within, L"Grotesk", Weight::Normal, Style::Normal),
                     oslayer::EOsLayerError);
    }
    EXPECT_EQ(log.expression(), GetParam().expression);
    EXPECT_EQ(log.path(), "FontEngine/src/FontUtils");
    EXPECT_EQ(fake::platform().fontReferences(), 0);
    EXPECT_EQ(fake::platform().familyReferences(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Calls, FailingFindFontTest,
    testing::Values(FailingCall{"Family.GetFont(", "pFontFamily->GetFont(iFont, &pFont)"},
                    FailingCall{"Font.GetInformationalStrings",
                                "pFont->GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES, "
                                "&pStrings, &stringExists)"},
                    FailingCall{"Win32Names.GetStringLength", "pFamilyNames->GetStringLength(index, &stringLength)"},
                    FailingCall{"Win32Names.GetString(",
                                "pFamilyNames->GetString(index, &name[0], stringLength + 1)"}));
