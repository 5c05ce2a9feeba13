#include "fonts/FaceNames.h"

#include <gtest/gtest.h>

#include <cwchar>

namespace platform::test {
namespace {

LocalizedNames english(const std::wstring& text) {
    return text.empty() ? LocalizedNames() : LocalizedNames{{L"en-us", text}};
}

struct Case {
    const wchar_t* win32Family;
    const wchar_t* win32Subfamily;
    const wchar_t* family;
    const wchar_t* face;
};

TEST(FaceNames, AFamilyIsWhatIsLeftOfTheWin32FamilyWithoutItsStyle) {
    const Case cases[] = {
        {L"Liberation Sans Narrow", L"Bold Italic", L"Liberation Sans", L"Narrow Bold Italic"},
        {L"Liberation Sans Narrow", L"Regular", L"Liberation Sans", L"Narrow"},
        {L"Liberation Sans", L"Regular", L"Liberation Sans", L"Regular"},
        {L"DejaVu Sans Mono", L"Book", L"DejaVu Sans Mono", L"Book"},
        {L"Sample ExtraLight", L"Italic", L"Sample", L"ExtraLight Italic"},
        {L"Sample Extra Light", L"Regular", L"Sample", L"Extra Light"},
        {L"Sample Light Condensed", L"Regular", L"Sample", L"Condensed Light"},
        {L"Sample Gothic Demi Cond", L"Oblique", L"Sample Gothic", L"Cond Demi Oblique"},
        // Nothing slopes here: it is the name of a script.
        {L"Sample Old Italic", L"Regular", L"Sample Old Italic", L"Regular"},
        {L"Sample Book", L"Regular", L"Sample", L"Book"},
        // A word of style that is the whole family, or part of another word, stays.
        {L"Black Letter", L"Regular", L"Black Letter", L"Regular"},
        {L"Bold", L"Regular", L"Bold", L"Regular"},
        {L"Century Schoolbook", L"Bold", L"Century Schoolbook", L"Bold"},
        {L"Times New Roman", L"Regular", L"Times New Roman", L"Regular"},
        {L"Sample Black", L"", L"Sample", L"Black"},
        {L"Sample  Twice", L"Fett", L"Sample  Twice", L"Fett"},
    };
    for (const Case& c : cases) {
        StoredNames names;
        names.win32Family = english(c.win32Family);
        names.win32Subfamily = english(c.win32Subfamily);
        const WwsFace result = wwsFace(names, {});
        ASSERT_EQ(result.family.size(), 1u);
        EXPECT_EQ(result.family[0].text, c.family);
        EXPECT_EQ(result.face[0].text, c.face);
    }
}

TEST(FaceNames, TablesDecideWhatANameAlsoStates) {
    StoredNames names;
    names.win32Family = english(L"Sample Narrow Light");
    const FaceTraits stored{DWRITE_FONT_WEIGHT_SEMI_LIGHT, DWRITE_FONT_STRETCH_SEMI_CONDENSED,
                            DWRITE_FONT_STYLE_NORMAL};
    const WwsFace result = wwsFace(names, stored);
    EXPECT_EQ(result.traits.weight, DWRITE_FONT_WEIGHT_SEMI_LIGHT);
    EXPECT_EQ(result.traits.stretch, DWRITE_FONT_STRETCH_SEMI_CONDENSED);
}

TEST(FaceNames, AWordOfSlopeGoesWhereTheFaceSlopes) {
    StoredNames names;
    names.win32Family = english(L"Sample Slanted");
    const FaceTraits stored{DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STRETCH_NORMAL, DWRITE_FONT_STYLE_OBLIQUE};
    EXPECT_EQ(wwsFace(names, stored).family[0].text, L"Sample");
    EXPECT_EQ(wwsFace(names, stored).face[0].text, L"Slanted");
}

TEST(FaceNames, ANameStatesWhatTheTablesLeaveNormal) {
    StoredNames names;
    names.win32Family = english(L"Sample Ultra Expanded Heavy");
    const WwsFace result = wwsFace(names, {});
    EXPECT_EQ(result.traits.weight, DWRITE_FONT_WEIGHT_HEAVY);
    EXPECT_EQ(result.traits.stretch, DWRITE_FONT_STRETCH_ULTRA_EXPANDED);
    EXPECT_EQ(result.traits.style, DWRITE_FONT_STYLE_NORMAL);
}

TEST(FaceNames, ATypographicFamilyIsTakenAsItIs) {
    StoredNames names;
    names.win32Family = english(L"Sample Cond Light");
    names.win32Subfamily = english(L"Bold");
    names.typographicFamily = english(L"Sample Light");
    EXPECT_EQ(wwsFace(names, {}).family[0].text, L"Sample Light");
    EXPECT_EQ(wwsFace(names, {}).face[0].text, L"Bold");
    names.typographicSubfamily = english(L"Condensed Thing");
    EXPECT_EQ(wwsFace(names, {}).face[0].text, L"Condensed Thing");
}

TEST(FaceNames, AFacesNameStatesWhatTheTablesLeaveNormal) {
    struct Row {
        const wchar_t* face;
        int weight;
        int stretch;
        DWRITE_FONT_STYLE style;
    };
    constexpr auto upright = DWRITE_FONT_STYLE_NORMAL;
    constexpr auto italic = DWRITE_FONT_STYLE_ITALIC;
    constexpr auto oblique = DWRITE_FONT_STYLE_OBLIQUE;
    for (const Row& row : {Row{L"Italic", 400, 5, italic}, Row{L"Light", 300, 5, upright},
                           Row{L"Condensed Bold", 700, 3, upright}, Row{L"SemiBoldOblique", 600, 5, oblique},
                           Row{L"Bold-Italic", 700, 5, italic}, Row{L"Regular", 400, 5, upright},
                           // A slope that is denied or halved is none, and letters are no words.
                           Row{L"Upright Italic", 400, 5, upright}, Row{L"Half-Italic", 400, 5, upright},
                           Row{L"Lighthouse", 400, 5, upright}}) {
        for (const bool typographic : {false, true}) {
            StoredNames names;
            names.win32Family = english(L"Sample");
            names.win32Subfamily = english(typographic ? L"Regular" : row.face);
            if (typographic) {
                names.typographicFamily = english(L"Sample");
                names.typographicSubfamily = english(row.face);
            }
            const FaceTraits traits = wwsFace(names, {}).traits;
            EXPECT_EQ(traits.weight, row.weight) << typographic;
            EXPECT_EQ(traits.stretch, row.stretch) << typographic;
            EXPECT_EQ(traits.style, row.style) << typographic;
        }
    }
}

TEST(FaceNames, APlainFaceSaysNothingButThatItIsRegular) {
    for (const wchar_t* const name : {L"Regular", L"Normal", L"book", L"Roman", L" regular", L"Book Regular"}) {
        EXPECT_TRUE(plainnessOf(english(name)).isPlain) << std::string(name, name + std::wcslen(name));
    }
    for (const wchar_t* const name : {L"Medium", L"Outline", L"Regular Display", L"RegularItalic", L"10pt"}) {
        EXPECT_FALSE(plainnessOf(english(name)).isPlain) << std::string(name, name + std::wcslen(name));
    }
    EXPECT_EQ(plainnessOf(english(L"Subiaco Bold 12")).otherWords, 2u);
}

TEST(FaceNames, AFaceWithoutAnyNamesHasNoFamily) {
    EXPECT_TRUE(wwsFace({}, {}).family.empty());
}

TEST(FaceNames, OfSimulatedFacesReplaceWhatIsSimulated) {
    const auto bold = DWRITE_FONT_SIMULATIONS_BOLD;
    const auto oblique = DWRITE_FONT_SIMULATIONS_OBLIQUE;
    EXPECT_EQ(simulatedFaceName(L"Regular", oblique), L"Oblique");
    EXPECT_EQ(simulatedFaceName(L"Book", oblique), L"Oblique");
    EXPECT_EQ(simulatedFaceName(L"Bold", oblique), L"Bold Oblique");
    EXPECT_EQ(simulatedFaceName(L"Regular", bold), L"Bold");
    EXPECT_EQ(simulatedFaceName(L"Regular", bold | oblique), L"Bold Oblique");
    EXPECT_EQ(simulatedFaceName(L"Light", bold), L"Bold");
    EXPECT_EQ(simulatedFaceName(L"Condensed Light", bold | oblique), L"Condensed Bold Oblique");
    EXPECT_EQ(simulatedFaceName(L"Medium Italic", bold), L"Bold Italic");
    EXPECT_EQ(simulatedFaceName(L"Caption", oblique), L"Caption Oblique");
}

TEST(FaceNames, ObliqueIsReadFromANameThatDoesNotSayItalic) {
    EXPECT_TRUE(namesOblique(english(L"Condensed Bold Oblique")));
    EXPECT_TRUE(namesOblique(english(L"SLANTED")));
    EXPECT_FALSE(namesOblique(english(L"Bold Italic")));
    EXPECT_FALSE(namesOblique(english(L"Oblique Italic")));
    EXPECT_FALSE(namesOblique({}));
}

} // namespace
} // namespace platform::test
