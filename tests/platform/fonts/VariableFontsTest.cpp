#include "support/Fonts.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

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

/// What the instances become when fontTools makes them fonts of their own.
TEST(VariableFonts, InstancesHaveTheMetricsOfTheirWeight) {
    const auto rows = readTable("instances.tsv");
    ASSERT_EQ(rows.size(), 5u);
    for (const auto& row : rows) {
        const int instance = std::stoi(row[1]) << 16;
        const std::array<int, 10> measured = listed(dataFont(row[0], instance).face().metrics());
        for (std::size_t i = 0; i < measured.size(); ++i) {
            EXPECT_EQ(measured[i], std::stoi(row[2 + i])) << row[0] << ' ' << row[1] << " column " << 2 + i;
        }
    }
}

TEST(VariableFonts, InstancesOfBothOutlineFormatsHaveTheOutlinesOfTheirWeight) {
    constexpr std::size_t firstGlyph = 12;
    constexpr std::size_t columns = 6;
    for (const auto& row : readTable("instances.tsv")) {
        const CFontFace& face = dataFont(row[0], std::stoi(row[1]) << 16).face();
        for (std::size_t at = firstGlyph; at + columns <= row.size(); at += columns) {
            const auto glyph = static_cast<std::uint16_t>(std::stoi(row[at]));
            const GlyphBounds& bounds = face.glyphBounds(glyph);
            EXPECT_EQ(face.advance(glyph), std::lround(std::stod(row[at + 1]))) << row[0] << " glyph " << glyph;
            EXPECT_NEAR(bounds.xMin, std::stof(row[at + 2]), 0.01F) << row[0] << " glyph " << glyph;
            EXPECT_NEAR(bounds.yMin, std::stof(row[at + 3]), 0.01F) << row[0] << " glyph " << glyph;
            EXPECT_NEAR(bounds.xMax, std::stof(row[at + 4]), 0.01F) << row[0] << " glyph " << glyph;
            EXPECT_NEAR(bounds.yMax, std::stof(row[at + 5]), 0.01F) << row[0] << " glyph " << glyph;
        }
    }
}

TEST(VariableFonts, ABoldInstanceMakesSimulatingItNeedless) {
    for (const auto& font : dataFont("Variable.ttf").family().fonts()) {
        EXPECT_EQ(font->simulations() & DWRITE_FONT_SIMULATIONS_BOLD, 0);
    }
}

} // namespace
} // namespace platform::test
