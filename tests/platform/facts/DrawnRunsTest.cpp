#include <string>
#include <vector>

#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

using Texts = std::vector<std::wstring>;

constexpr DWRITE_TEXT_RANGE all{0, 0xFFFFFFFF};

TEST(Runs, AreCutWhereTheTypographyChanges) {
    IDWriteTypography* typography = nullptr;
    ASSERT_EQ(S_OK, factory().CreateTypography(&typography));
    const Reference<IDWriteTypography> owned(typography, false);
    const auto layout = makeLayout(u"office");
    EXPECT_EQ(S_OK, layout->SetTypography(typography, {2, 2}));
    EXPECT_EQ((Texts{L"of", L"fi", L"ce"}), runTexts(drawnRuns(*layout)));
}

TEST(Runs, AreKernedWithoutBeingAsked) {
    // In Liberation Sans A and V are 1366 units wide and 152 closer together than that.
    const auto runs = drawnRuns(*makeLayout(u"AV", 0, 0, {.family = L"Liberation Sans", .size = 40.0F}));
    ASSERT_EQ(1U, runs.size());
    EXPECT_NEAR(23.71F, runs[0].advances[0], 0.005F);
    EXPECT_NEAR(26.68F, runs[0].advances[1], 0.005F);
}

TEST(Runs, ALetterWithItsMarkIsDrawnLikeTheComposedLetter) {
    const auto composed = drawnRuns(*makeLayout(u"\u00E9"));
    const auto parts = drawnRuns(*makeLayout(u"e\u0301"));
    ASSERT_EQ(1U, parts.size());
    EXPECT_EQ(composed[0].glyphs, parts[0].glyphs);
    EXPECT_EQ(composed[0].advances, parts[0].advances);
    EXPECT_EQ((std::vector<unsigned>{0, 0}), parts[0].clusterMap);
}

TEST(Runs, MarksAreAttachedAcrossAChangeOfDecoration) {
    // q with a mark has no composed form: base and mark are two glyphs.
    const auto plain = drawnRuns(*makeLayout(u"q\u0308x"));
    const auto layout = makeLayout(u"q\u0308x");
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, {0, 1}));
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ((Texts{L"q\u0308", L"x"}), runTexts(runs));
    ASSERT_EQ(2U, runs[0].glyphs.size());
    EXPECT_EQ(plain[0].glyphs[1], runs[0].glyphs[1]);
    EXPECT_NE(0.0F, runs[0].offsets[1].advanceOffset);
    EXPECT_EQ(plain[0].offsets[1].advanceOffset, runs[0].offsets[1].advanceOffset);
    EXPECT_EQ(plain[0].offsets[1].ascenderOffset, runs[0].offsets[1].ascenderOffset);
}

TEST(Runs, WithoutGlyphsCountTheirPositions) {
    for (const DrawnCall& run : drawnRuns(*makeLayout(u"\u202A\u200E\u202C\r\n"))) {
        EXPECT_TRUE(run.glyphs.empty());
        for (unsigned position = 0; position < run.clusterMap.size(); ++position) {
            EXPECT_EQ(position, run.clusterMap[position]);
        }
    }
    const auto pair = drawnRuns(*makeLayout(u"\r\n"));
    ASSERT_EQ(1U, pair.size());
    EXPECT_EQ((std::vector<unsigned>{0, 1}), pair[0].clusterMap);
}

TEST(Underline, IsOneBarAcrossWeightsAndFamilies) {
    const auto layout = makeLayout(u"aabbcc");
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, all));
    EXPECT_EQ(S_OK, layout->SetFontWeight(DWRITE_FONT_WEIGHT_BOLD, {2, 2}));
    EXPECT_EQ(S_OK, layout->SetFontFamilyName(L"Liberation Sans", {4, 2}));
    Recorder recorder;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0, 0));
    EXPECT_EQ(3U, recorder.ofKind(DrawnCall::GlyphRun).size());
    const auto bars = recorder.ofKind(DrawnCall::Underline);
    ASSERT_EQ(1U, bars.size());
    EXPECT_FLOAT_EQ(metricsOf(*layout).width, bars[0].width);
}

TEST(Underline, TellsTheDirectionInWhichLinesFlow) {
    const auto layout = makeLayout(u"text");
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, all));
    EXPECT_EQ(S_OK, layout->SetFlowDirection(DWRITE_FLOW_DIRECTION_BOTTOM_TO_TOP));
    Recorder recorder;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0, 0));
    EXPECT_EQ(DWRITE_FLOW_DIRECTION_BOTTOM_TO_TOP, recorder.ofKind(DrawnCall::Underline).at(0).flow);
}

TEST(Runs, OffsetsOfRightToLeftTextPointToTheLeft) {
    // A Hebrew letter with a point: what moves the point to the right of its pen is negative along the text.
    const auto runs = drawnRuns(*makeLayout(u"\u05D0\u05B8"));
    ASSERT_EQ(1U, runs.size());
    ASSERT_EQ(2U, runs[0].glyphs.size());
    EXPECT_EQ(1U, runs[0].bidiLevel);
    EXPECT_EQ((std::vector<unsigned>{0, 0}), runs[0].clusterMap);
    // The pen of the mark stands at the letter's left edge; the mark belongs under the letter, to the right of it.
    EXPECT_GT(0.0F, runs[0].offsets[1].advanceOffset);
}

} // namespace
} // namespace platform_test
