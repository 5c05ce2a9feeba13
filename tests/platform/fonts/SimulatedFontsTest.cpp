#include "support/Fonts.h"

#include "fonts/FaceSource.h"
#include "fonts/FontSet.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace platform::test {
namespace {

constexpr auto bold = DWRITE_FONT_SIMULATIONS_BOLD;
constexpr auto oblique = DWRITE_FONT_SIMULATIONS_OBLIQUE;

/// The font of a family with exactly these traits and simulations, or null.
CFont* member(CFontFamily& family, int weight, int style, DWRITE_FONT_SIMULATIONS simulations) {
    const auto found = std::find_if(family.fonts().begin(), family.fonts().end(), [&](const auto& font) {
        return font->weight() == weight && font->style() == style && font->simulations() == simulations;
    });
    return found != family.fonts().end() ? found->get() : nullptr;
}

TEST(SimulatedFonts, StandAfterTheRealOnes) {
    for (const auto& family : CFontCollection::system().families()) {
        EXPECT_TRUE(std::is_partitioned(family->fonts().begin(), family->fonts().end(), [](const auto& font) {
            return font->simulations() == DWRITE_FONT_SIMULATIONS_NONE;
        }));
    }
}

TEST(SimulatedFonts, AnObliqueIsThereForEveryWeightAndStretchWithoutARealOne) {
    for (const auto& family : CFontCollection::system().families()) {
        for (const auto& upright : family->fonts()) {
            if (upright->style() != DWRITE_FONT_STYLE_NORMAL) {
                continue;
            }
            EXPECT_EQ(std::count_if(family->fonts().begin(), family->fonts().end(),
                                    [&](const auto& font) {
                                        return font->style() == DWRITE_FONT_STYLE_OBLIQUE &&
                                               font->weight() == upright->weight() &&
                                               font->stretch() == upright->stretch();
                                    }),
                      1);
        }
    }
}

TEST(SimulatedFonts, AnItalicDoesNotReplaceTheOblique) {
    CFont* const simulated = member(family(L"Liberation Sans"), 400, DWRITE_FONT_STYLE_OBLIQUE, oblique);
    ASSERT_NE(simulated, nullptr);
    EXPECT_EQ(textAt(*faceNames(*simulated), 0), L"Oblique");
    EXPECT_EQ(faceNames(*simulated)->GetCount(), 1u);
}

TEST(SimulatedFonts, ABoldIsThereWhereTheFamilyHasNone) {
    CFontFamily& music = family(L"Noto Music");
    CFont* const heavy = member(music, 700, DWRITE_FONT_STYLE_NORMAL, bold);
    CFont* const leaning = member(music, 700, DWRITE_FONT_STYLE_OBLIQUE, bold | oblique);
    ASSERT_NE(heavy, nullptr);
    ASSERT_NE(leaning, nullptr);
    EXPECT_EQ(textAt(*faceNames(*heavy), 0), L"Bold");
    EXPECT_EQ(textAt(*faceNames(*leaning), 0), L"Bold Oblique");
    for (const auto& font : family(L"DejaVu Sans").fonts()) {
        EXPECT_EQ(font->simulations() & bold, 0);
    }
}

TEST(SimulatedFonts, FontAndFaceAgreeOnTheirSimulations) {
    for (const auto& font : family(L"Noto Music").fonts()) {
        EXPECT_EQ(font->GetSimulations(), font->face().GetSimulations());
    }
}

TEST(SimulatedFonts, AnObliqueLeansBy20Degrees) {
    for (const auto& row : readTable("glyphs.tsv")) {
        CFont& real = fontOfFile(row[0]);
        CFont* const leaning = member(real.family(), real.weight(), DWRITE_FONT_STYLE_OBLIQUE, oblique);
        if (leaning == nullptr || row.size() == 3 || &leaning->source() != &real.source()) {
            continue;
        }
        const auto glyph = static_cast<std::uint16_t>(std::stoi(row[1]));
        const GlyphBounds& bounds = leaning->face().glyphBounds(glyph);
        EXPECT_NEAR(bounds.xMin, std::stof(row[7]), 0.01F) << row[0] << " glyph " << glyph;
        EXPECT_NEAR(bounds.xMax, std::stof(row[8]), 0.01F) << row[0] << " glyph " << glyph;
        EXPECT_NEAR(bounds.yMax, std::stof(row[6]), 0.01F) << row[0] << " glyph " << glyph;
        EXPECT_EQ(leaning->face().advance(glyph), std::stoi(row[2]));
    }
    // Fonts of the table that have such a face at all.
    EXPECT_NE(member(family(L"Noto Nastaliq Urdu"), 400, DWRITE_FONT_STYLE_OBLIQUE, oblique), nullptr);
    EXPECT_NE(member(family(L"Liberation Sans"), 400, DWRITE_FONT_STYLE_OBLIQUE, oblique), nullptr);
}

TEST(SimulatedFonts, ABoldWidensStemsAndAdvancesByA24thOfTheEmInBothOutlineFormats) {
    for (const char* file : {"NoLetters.ttf", "Cff.otf"}) {
        CFont& real = dataFont(file);
        CFont* const heavy = member(real.family(), 700, DWRITE_FONT_STYLE_NORMAL, bold);
        ASSERT_NE(heavy, nullptr) << file;
        // I is a rectangle from (100, 0) to (200, 710) in an advance of 300.
        const GlyphBounds& bounds = heavy->face().glyphBounds(4);
        EXPECT_FLOAT_EQ(bounds.xMin, 100.0F) << file;
        EXPECT_FLOAT_EQ(bounds.xMax, 242.0F) << file;
        EXPECT_FLOAT_EQ(bounds.yMin, 0.0F) << file;
        EXPECT_FLOAT_EQ(bounds.yMax, 710.0F) << file;
        EXPECT_EQ(heavy->face().advance(4), 342) << file;
        DWRITE_GLYPH_METRICS metrics;
        const UINT16 glyph = 4;
        ASSERT_EQ(heavy->face().GetDesignGlyphMetrics(&glyph, 1, &metrics, FALSE), S_OK);
        EXPECT_EQ(metrics.advanceWidth, 342u);
        EXPECT_EQ(metrics.rightSideBearing, 100);
    }
}

TEST(SimulatedFonts, ABoldLeavesGlyphsWithoutAdvanceWithoutOne) {
    CFont& real = font(L"Noto Looped Thai");
    const std::uint16_t mark = real.face().nominalGlyph(0x0E31);
    ASSERT_NE(mark, 0);
    ASSERT_EQ(real.face().advance(mark), 0);
    // A face of its own, as if the family had no bold.
    const CFontCollection alone(FontSet{{{real.source().path(), real.source().index()}}});
    CFont* const heavy = member(*alone.families()[0], 700, DWRITE_FONT_STYLE_NORMAL, bold);
    ASSERT_NE(heavy, nullptr);
    EXPECT_EQ(heavy->face().advance(mark), 0);
    const std::uint16_t letter = real.face().nominalGlyph(0x0E01);
    EXPECT_GT(heavy->face().advance(letter), real.face().advance(letter));
}

TEST(SimulatedFonts, ABoldKeepsEmptyGlyphsEmpty) {
    CFont* const heavy = member(family(L"Noto Music"), 700, DWRITE_FONT_STYLE_NORMAL, bold);
    ASSERT_NE(heavy, nullptr);
    EXPECT_TRUE(heavy->face().glyphBounds(heavy->face().nominalGlyph(U' ')).empty());
}

} // namespace
} // namespace platform::test
