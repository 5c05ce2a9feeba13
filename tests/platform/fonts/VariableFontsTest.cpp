#include "support/Fonts.h"

#include <gtest/gtest.h>

namespace platform::test {
namespace {

// In this font the right side of every letter and its advance grow by 100 units from
// weight 400 to weight 900.
constexpr int boldInstance = 2 << 16;
constexpr int blackInstance = 3 << 16;

TEST(VariableFonts, NamedInstancesAreMembersOfOneFamily) {
    CFontFamily& family = dataFont("Variable.ttf").family();
    EXPECT_EQ(&dataFont("Variable.ttf", boldInstance).family(), &family);
    EXPECT_EQ(&dataFont("Variable.ttf", blackInstance).family(), &family);
    EXPECT_EQ(family.names()[0].text, L"Test Variable");
}

TEST(VariableFonts, AnInstanceHasItsOwnWeightAndName) {
    CFont& bold = dataFont("Variable.ttf", boldInstance);
    EXPECT_EQ(dataFont("Variable.ttf").weight(), 400);
    EXPECT_EQ(bold.weight(), 700);
    EXPECT_EQ(dataFont("Variable.ttf", blackInstance).weight(), 900);
    EXPECT_EQ(textAt(*faceNames(bold), 0), L"Bold");
    EXPECT_EQ(textAt(*faceNames(dataFont("Variable.ttf", blackInstance)), 0), L"Black");
    EXPECT_EQ(textAt(*informationalStrings(bold, DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES), 0), L"Test Variable");
}

TEST(VariableFonts, AnInstanceIsMeasuredAsItIsDrawn) {
    // I: from 100 to 200 in an advance of 300 at weight 400; 3/5 of the way at 700.
    const struct {
        int index;
        float xMax;
        int advance;
    } cases[] = {{0, 200, 300}, {boldInstance, 260, 360}, {blackInstance, 300, 400}};
    for (const auto& c : cases) {
        const CFontFace& face = dataFont("Variable.ttf", c.index).face();
        EXPECT_NEAR(face.glyphBounds(4).xMax, c.xMax, 0.01F);
        EXPECT_FLOAT_EQ(face.glyphBounds(4).xMin, 100.0F);
        EXPECT_EQ(face.advance(4), c.advance);
    }
}

TEST(VariableFonts, ABoldInstanceMakesSimulatingItNeedless) {
    for (const auto& font : dataFont("Variable.ttf").family().fonts()) {
        EXPECT_EQ(font->simulations() & DWRITE_FONT_SIMULATIONS_BOLD, 0);
    }
}

} // namespace
} // namespace platform::test
