#include "support/Fonts.h"

#include <gtest/gtest.h>

#include <cstring>

namespace platform::test {
namespace {

DWRITE_FONT_METRICS metricsOf(CFont& font) {
    DWRITE_FONT_METRICS metrics;
    font.GetMetrics(&metrics);
    return metrics;
}

TEST(FontMetrics, AreWhatTheTablesOfEveryPinnedFaceSay) {
    const auto rows = readTable("faces.tsv");
    ASSERT_GT(rows.size(), 300u);
    for (const auto& row : rows) {
        CFont& font = fontOfFile(row[0], std::stoi(row[1]));
        const std::array<int, 10> actual = listed(metricsOf(font));
        for (std::size_t i = 0; i < actual.size(); ++i) {
            EXPECT_EQ(actual[i], std::stoi(row[10 + i])) << row[0] << " " << row[1] << " column " << 10 + i;
        }
        EXPECT_EQ(font.face().GetGlyphCount(), std::stoi(row[9])) << row[0];
    }
}

TEST(FontMetrics, OfTheUsualFontsAreTheWorkedValues) {
    struct Worked {
        const wchar_t* family;
        int em, ascent, descent;
    };
    for (const Worked& worked : {Worked{L"Liberation Sans", 2048, 1854, 434}, Worked{L"DejaVu Sans", 2048, 1901, 483},
                                 Worked{L"Noto Sans", 1000, 1069, 293}, Worked{L"Noto Sans CJK JP", 1000, 1160, 288}}) {
        const DWRITE_FONT_METRICS metrics = metricsOf(font(worked.family));
        EXPECT_EQ(metrics.designUnitsPerEm, worked.em);
        EXPECT_EQ(metrics.ascent, worked.ascent);
        EXPECT_EQ(metrics.descent, worked.descent);
    }
    EXPECT_EQ(metricsOf(font(L"Liberation Sans")).lineGap, 67);
    EXPECT_EQ(metricsOf(font(L"DejaVu Sans")).lineGap, 0);
}

TEST(FontMetrics, CapHeightOfAnOldOs2TableIsWhatHMeasures) {
    EXPECT_EQ(metricsOf(font(L"DejaVu Sans")).capHeight, 1493);
    EXPECT_EQ(metricsOf(font(L"DejaVu Sans")).xHeight, 1120);
}

TEST(FontMetrics, AStatedCapHeightComesBeforeTheLetters) {
    const DWRITE_FONT_METRICS metrics = metricsOf(dataFont("Cff.otf"));
    EXPECT_EQ(metrics.capHeight, 705);
    EXPECT_EQ(metrics.xHeight, 470);
}

TEST(FontMetrics, AStatedCapHeightOfZeroIsMeasuredInstead) {
    const DWRITE_FONT_METRICS metrics = metricsOf(dataFont("Words.ttf"));
    EXPECT_EQ(metrics.capHeight, 710);
    EXPECT_EQ(metrics.xHeight, 480);
}

TEST(FontMetrics, WithoutLettersTheCapHeightIsAShareOfTheEm) {
    const DWRITE_FONT_METRICS metrics = metricsOf(dataFont("NoLetters.ttf"));
    EXPECT_EQ(metrics.capHeight, 700);
    EXPECT_EQ(metrics.xHeight, 500);
}

TEST(FontMetrics, TheWinBoxAndWhatHheaAsksForBeyondIt) {
    // hhea 800 - 200 + 90 = 1090 units of line; the Win box of 900 + 300 holds them.
    const DWRITE_FONT_METRICS metrics = metricsOf(dataFont("Words.ttf"));
    EXPECT_EQ(metrics.ascent, 900);
    EXPECT_EQ(metrics.descent, 300);
    EXPECT_EQ(metrics.lineGap, 0);
}

TEST(FontMetrics, AWinDescentWithADescendersSignCountsAsItsAmount) {
    EXPECT_EQ(metricsOf(dataFont("Cff.otf")).descent, 300);
}

TEST(FontMetrics, TypoMetricsWhereTheFontAsksForThem) {
    const DWRITE_FONT_METRICS metrics = metricsOf(dataFont("Russian.ttf"));
    EXPECT_EQ(metrics.ascent, 750);
    EXPECT_EQ(metrics.descent, 0) << "a typographic descender above the baseline leaves no descent";
    EXPECT_EQ(metrics.lineGap, 100);
}

TEST(FontMetrics, WithoutOs2TheHheaTableDecides) {
    const DWRITE_FONT_METRICS metrics = metricsOf(dataFont("NoOs2.ttf"));
    EXPECT_EQ(metrics.ascent, 800);
    EXPECT_EQ(metrics.descent, 200);
    EXPECT_EQ(metrics.lineGap, 0);
    EXPECT_EQ(metrics.strikethroughPosition, 333);
    EXPECT_EQ(metrics.capHeight, 710);
}

TEST(FontMetrics, ThicknessesOfZeroAreReplaced) {
    const DWRITE_FONT_METRICS none = metricsOf(dataFont("Words.ttf"));
    EXPECT_EQ(none.underlineThickness, 1000 / 14);
    EXPECT_EQ(none.strikethroughThickness, none.underlineThickness);
    const DWRITE_FONT_METRICS stated = metricsOf(dataFont("Cff.otf"));
    EXPECT_EQ(stated.underlineThickness, 40);
    EXPECT_EQ(stated.strikethroughThickness, 70);
    EXPECT_EQ(stated.underlinePosition, -120);
}

TEST(FontMetrics, SimulationsChangeNoneOfThem) {
    CFont& base = font(L"Noto Music");
    for (const auto& simulated : family(L"Noto Music").fonts()) {
        const DWRITE_FONT_METRICS expected = metricsOf(base);
        const DWRITE_FONT_METRICS actual = metricsOf(*simulated);
        EXPECT_EQ(std::memcmp(&expected, &actual, sizeof expected), 0);
    }
    EXPECT_EQ(family(L"Noto Music").fonts().size(), 4u);
}

} // namespace
} // namespace platform::test
