#include "support/Fonts.h"

#include <gtest/gtest.h>

#include <cmath>

namespace platform::test {
namespace {

constexpr float tolerance = 0.001F;

TEST(FontFace, BoundsAndAdvancesAreThoseOfTheOutlines) {
    const auto rows = readTable("glyphs.tsv");
    ASSERT_GT(rows.size(), 300u);
    for (const auto& row : rows) {
        const CFontFace& face = fontOfFile(row[0]).face();
        const auto glyph = static_cast<std::uint16_t>(std::stoi(row[1]));
        const GlyphBounds& bounds = face.glyphBounds(glyph);
        EXPECT_EQ(face.advance(glyph), std::stoi(row[2])) << row[0] << " glyph " << glyph;
        if (row.size() == 3) {
            EXPECT_TRUE(bounds.empty()) << row[0] << " glyph " << glyph;
            continue;
        }
        ASSERT_FALSE(bounds.empty()) << row[0] << " glyph " << glyph;
        EXPECT_NEAR(bounds.xMin, std::stof(row[3]), tolerance) << row[0] << " glyph " << glyph;
        EXPECT_NEAR(bounds.yMin, std::stof(row[4]), tolerance) << row[0] << " glyph " << glyph;
        EXPECT_NEAR(bounds.xMax, std::stof(row[5]), tolerance) << row[0] << " glyph " << glyph;
        EXPECT_NEAR(bounds.yMax, std::stof(row[6]), tolerance) << row[0] << " glyph " << glyph;
    }
}

TEST(FontFace, BoundsAreTightAroundCurvesOfBothKinds) {
    // The control points lie at -50 and 850 (quadratic), 0 and 800 (cubic); the curves reach half way.
    for (const char* file : {"Words.ttf", "Cff.otf"}) {
        const CFontFace& face = dataFont(file).face();
        const GlyphBounds& bounds = face.glyphBounds(face.nominalGlyph(U'O'));
        EXPECT_FLOAT_EQ(bounds.xMin, 25.0F) << file;
        EXPECT_FLOAT_EQ(bounds.xMax, 775.0F) << file;
        EXPECT_FLOAT_EQ(bounds.yMin, 0.0F) << file;
        EXPECT_FLOAT_EQ(bounds.yMax, 700.0F) << file;
    }
}

TEST(FontFace, FindsGlyphsOfAllPlanes) {
    CFontFace& face = dataFont("NoLetters.ttf").face();
    EXPECT_EQ(face.nominalGlyph(0x25A0), 4);
    EXPECT_EQ(face.nominalGlyph(0x1F600), 5);
    EXPECT_EQ(face.nominalGlyph(0x10FFFF), 3);
    for (const char32_t missing : {U'\0', U'H', U'\uFFFF', U'\U0001F601', U'\U0010FFFE', char32_t{0x110000},
                                   char32_t{0xD800}, char32_t{0xFFFFFFFF}}) {
        EXPECT_EQ(face.nominalGlyph(missing), 0) << static_cast<std::uint32_t>(missing);
        EXPECT_FALSE(face.hasCharacter(missing));
    }
}

TEST(FontFace, GlyphIndicesAreGivenForACallersArray) {
    IDWriteFontFace& face = dataFont("Words.ttf").face();
    const UINT32 codePoints[] = {U'H', U'x', U'?', U' '};
    UINT16 glyphs[4] = {9, 9, 9, 9};
    EXPECT_EQ(face.GetGlyphIndices(codePoints, 4, glyphs), S_OK);
    EXPECT_EQ(glyphs[0], 2);
    EXPECT_EQ(glyphs[1], 3);
    EXPECT_EQ(glyphs[2], 0);
    EXPECT_EQ(glyphs[3], 1);
    EXPECT_EQ(face.GetGlyphIndices(nullptr, 4, glyphs), E_INVALIDARG);
    EXPECT_EQ(face.GetGlyphIndices(codePoints, 4, nullptr), E_INVALIDARG);
}

TEST(FontFace, AFontTellsWhetherItHasACharacter) {
    IDWriteFont& font = dataFont("Words.ttf");
    BOOL exists = FALSE;
    EXPECT_EQ(font.HasCharacter(U'H', &exists), S_OK);
    EXPECT_EQ(exists, TRUE);
    EXPECT_EQ(font.HasCharacter(U'\u05D0', &exists), S_OK);
    EXPECT_EQ(exists, FALSE);
}

TEST(FontFace, DesignMetricsAreTheDistancesFromAdvanceBoxToInk) {
    IDWriteFontFace& face = dataFont("Words.ttf").face();
    const UINT16 glyphs[] = {2, 1, 999};
    DWRITE_GLYPH_METRICS metrics[3];
    ASSERT_EQ(face.GetDesignGlyphMetrics(glyphs, 3, metrics), S_OK);
    // H: a rectangle from (50, 0) to (650, 710) in an advance of 700.
    EXPECT_EQ(metrics[0].advanceWidth, 700u);
    EXPECT_EQ(metrics[0].leftSideBearing, 50);
    EXPECT_EQ(metrics[0].rightSideBearing, 50);
    const INT32 inkHeight =
        static_cast<INT32>(metrics[0].advanceHeight) - metrics[0].topSideBearing - metrics[0].bottomSideBearing;
    EXPECT_EQ(inkHeight, 710);
    EXPECT_EQ(metrics[0].verticalOriginY - metrics[0].topSideBearing, 710);
    // The space has an advance and no ink.
    EXPECT_EQ(metrics[1].advanceWidth, 250u);
    EXPECT_EQ(metrics[1].leftSideBearing, 0);
    EXPECT_EQ(metrics[1].rightSideBearing, 250);
    // Past the last glyph there is nothing.
    EXPECT_EQ(metrics[2].advanceWidth, 0u);
    EXPECT_EQ(metrics[2].advanceHeight, 0u);
    EXPECT_EQ(face.GetDesignGlyphMetrics(nullptr, 1, metrics), E_INVALIDARG);
    EXPECT_EQ(face.GetDesignGlyphMetrics(glyphs, 1, nullptr), E_INVALIDARG);
}

TEST(FontFace, PastTheLastGlyphThereIsNothing) {
    const CFontFace& face = dataFont("Words.ttf").face();
    EXPECT_EQ(face.advance(6), 0);
    EXPECT_TRUE(face.glyphBounds(6).empty());
    EXPECT_TRUE(face.glyphBounds(0xFFFF).empty());
}

TEST(FontFace, TheShapingFontIsInDesignUnits) {
    const CFontFace& face = font(L"DejaVu Sans").face();
    int x = 0;
    int y = 0;
    hb_font_get_scale(face.shapingFont(), &x, &y);
    EXPECT_EQ(x, 2048);
    EXPECT_EQ(y, 2048);
    EXPECT_TRUE(hb_font_is_immutable(face.shapingFont()));
    EXPECT_EQ(face.unitsPerEm(), 2048u);
}

TEST(FontFace, IdsAreTheirOwn) {
    EXPECT_NE(font(L"DejaVu Sans").face().id(), font(L"Liberation Sans").face().id());
    EXPECT_EQ(font(L"DejaVu Sans").face().id(), font(L"DejaVu Sans").face().id());
}

TEST(FontFace, CollectionsHoldEachOfTheirFaces) {
    EXPECT_EQ(dataFont("Collection.ttc", 0).family().names()[0].text, L"Test Collection One");
    EXPECT_EQ(dataFont("Collection.ttc", 1).family().names()[0].text, L"Test Collection Two");
    EXPECT_EQ(fontOfFile("fonts-noto-cjk/NotoSansCJK-Regular.ttc", 7).family().names()[0].text,
              L"Noto Sans Mono CJK SC");
}

} // namespace
} // namespace platform::test
