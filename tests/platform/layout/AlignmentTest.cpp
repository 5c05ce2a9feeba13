#include "layout/LayoutTestSupport.h"

namespace platform_test {
namespace {

constexpr auto rightToLeft = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT;

float leftOf(std::u16string_view text, DWRITE_TEXT_ALIGNMENT alignment, float box,
             DWRITE_READING_DIRECTION reading = DWRITE_READING_DIRECTION_LEFT_TO_RIGHT) {
    const auto layout = makeLayout(text, box, 0, {.wrapping = DWRITE_WORD_WRAPPING_NO_WRAP, .reading = reading});
    EXPECT_EQ(S_OK, layout->SetTextAlignment(alignment));
    return metricsOf(*layout).left;
}

TEST(Alignment, PlacesTheWidestLineInTheBox) {
    const float width = metricsOf(*makeLayout(u"text")).width;
    EXPECT_EQ(0.0F, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_LEADING, 500));
    EXPECT_FLOAT_EQ(500 - width, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_TRAILING, 500));
    EXPECT_FLOAT_EQ((500 - width) / 2, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_CENTER, 500));
    EXPECT_EQ(0.0F, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_JUSTIFIED, 500));
}

TEST(Alignment, RightToLeftReadingSwapsLeadingAndTrailing) {
    const float width = metricsOf(*makeLayout(u"text")).width;
    EXPECT_FLOAT_EQ(500 - width, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_LEADING, 500, rightToLeft));
    EXPECT_EQ(0.0F, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_TRAILING, 500, rightToLeft));
    EXPECT_FLOAT_EQ((500 - width) / 2, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_CENTER, 500, rightToLeft));
    EXPECT_FLOAT_EQ(500 - width, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_JUSTIFIED, 500, rightToLeft));
}

TEST(Alignment, FollowsTheReadingDirectionNotTheScript) {
    EXPECT_EQ(0.0F, leftOf(u"\u05D0\u05D1\u05D2", DWRITE_TEXT_ALIGNMENT_LEADING, 500));
}

TEST(Alignment, VerticalReadingDirectionsLayOutAsLeftToRight) {
    const float width = metricsOf(*makeLayout(u"text")).width;
    for (const auto reading : {DWRITE_READING_DIRECTION_TOP_TO_BOTTOM, DWRITE_READING_DIRECTION_BOTTOM_TO_TOP}) {
        EXPECT_EQ(0.0F, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_LEADING, 500, reading));
        const auto layout = makeLayout(u"text", 0, 0, {.reading = reading});
        EXPECT_EQ(0U, drawnRuns(*layout).at(0).bidiLevel);
        EXPECT_FLOAT_EQ(width, metricsOf(*layout).width);
    }
}

TEST(Alignment, NothingIsClamped) {
    const float width = metricsOf(*makeLayout(u"text")).width;
    EXPECT_FLOAT_EQ(-width, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_TRAILING, 0));
    EXPECT_FLOAT_EQ(-width / 2, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_CENTER, 0));
    EXPECT_FLOAT_EQ(10 - width, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_TRAILING, 10));
    EXPECT_FLOAT_EQ(-width, leftOf(u"text", DWRITE_TEXT_ALIGNMENT_LEADING, 0, rightToLeft));
}

TEST(Alignment, EveryLineIsPlacedByItsOwnWidth) {
    const auto layout = makeLayout(u"wide line\nthin", 300.0F);
    EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_TRAILING));
    const auto runs = drawnRuns(*layout);
    EXPECT_FLOAT_EQ(300 - metricsOf(*makeLayout(u"wide line")).width, runs.front().x);
    EXPECT_FLOAT_EQ(300 - metricsOf(*makeLayout(u"thin")).width, runs.back().x);
    EXPECT_FLOAT_EQ(runs.front().x, metricsOf(*layout).left);
}

TEST(Alignment, TrailingWhitespaceDoesNotMoveText) {
    for (const auto alignment : {DWRITE_TEXT_ALIGNMENT_TRAILING, DWRITE_TEXT_ALIGNMENT_CENTER}) {
        EXPECT_EQ(leftOf(u"text", alignment, 500), leftOf(u"text   ", alignment, 500));
        const auto layout = makeLayout(u"text  ", 500.0F);
        EXPECT_EQ(S_OK, layout->SetTextAlignment(alignment));
        EXPECT_FLOAT_EQ(leftOf(u"text", alignment, 500), drawnRuns(*layout).front().x);
    }
}

TEST(Alignment, TrailingWhitespaceOfRightToLeftLinesHangsOnTheLeft) {
    const auto layout = makeLayout(u"\u05D0\u05D1  ", 500.0F, 0, {.reading = rightToLeft});
    const auto runs = drawnRuns(*layout);
    ASSERT_FALSE(runs.empty());
    EXPECT_FLOAT_EQ(500.0F, runs.front().x);
    EXPECT_EQ(1U, runs.front().bidiLevel);
    EXPECT_FLOAT_EQ(500.0F - metricsOf(*layout).width, metricsOf(*layout).left);
}

TEST(Alignment, VerticalAlignmentPlacesTheWholeText) {
    const auto layout = makeLayout(u"a\nb", 0, 200.0F);
    const float height = metricsOf(*layout).height;
    EXPECT_EQ(0.0F, metricsOf(*layout).top);
    EXPECT_EQ(S_OK, layout->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_FAR));
    EXPECT_FLOAT_EQ(200 - height, metricsOf(*layout).top);
    EXPECT_EQ(S_OK, layout->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_CENTER));
    EXPECT_FLOAT_EQ((200 - height) / 2, metricsOf(*layout).top);
    EXPECT_FLOAT_EQ((200 - height) / 2 + linesOf(*layout)[0].baseline, drawnRuns(*layout).front().y);
    EXPECT_EQ(S_OK, layout->SetMaxHeight(10.0F));
    EXPECT_FLOAT_EQ((10 - height) / 2, metricsOf(*layout).top);
    EXPECT_EQ(S_OK, layout->SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT_FAR));
    EXPECT_FLOAT_EQ(10 - height, metricsOf(*layout).top);
}

Reference<IDWriteTextLayout> justified(std::u16string_view text, float box, const FormatOptions& options = {}) {
    auto layout = makeLayout(text, box, 0, options);
    EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_JUSTIFIED));
    return layout;
}

float rightEnd(const DrawnCall& run) {
    return run.x + run.advance();
}

TEST(Justification, StretchesTheSpacesOfALineToTheBox) {
    const auto layout = justified(u"aa bb cc dd", metricsOf(*makeLayout(u"aa bb cc d")).width);
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ(2U, runs.size());
    EXPECT_EQ(L"aa bb cc ", runs[0].text);
    // The last of the nine advances is the trailing space, which hangs.
    EXPECT_NEAR(layout->GetMaxWidth(), rightEnd(runs[0]) - runs[0].advances.back(), 1e-3F);
    EXPECT_FLOAT_EQ(runs[0].advances[2], runs[0].advances[5]);
    EXPECT_GT(runs[0].advances[2], runs[0].advances[8]);
    EXPECT_FLOAT_EQ(20.0F * 651.0F / 2048.0F, runs[0].advances[8]);
    EXPECT_EQ(layout->GetMaxWidth(), metricsOf(*layout).width);
}

TEST(Justification, LeavesTheLastLineAndLinesBeforeNewlinesAlone) {
    const auto layout = justified(u"aa bb\ncc dd", 400.0F);
    const auto plain = makeLayout(u"aa bb\ncc dd", 400.0F);
    EXPECT_EQ(metricsOf(*plain).width, metricsOf(*layout).width);
    EXPECT_EQ(drawnRuns(*plain)[0].advances, drawnRuns(*layout)[0].advances);
}

TEST(Justification, DoesNotStretchSingleWords) {
    const float box = metricsOf(*makeLayout(u"wordx")).width;
    const auto layout = justified(u"word next", box);
    EXPECT_FLOAT_EQ(metricsOf(*makeLayout(u"word")).width,
                    rightEnd(drawnRuns(*layout)[0]) - drawnRuns(*layout)[0].advances.back());
}

TEST(Justification, StretchesBetweenIdeographsWhereThereAreNoSpaces) {
    const std::u16string text = u"\u6F22\u5B57\u6F22\u5B57\u6F22\u5B57\u6F22";
    const auto layout = justified(text, 70.0F, {.family = L"Noto Sans CJK JP"});
    EXPECT_EQ((std::vector<unsigned>{3, 3, 1}), lineLengths(*layout));
    const auto runs = drawnRuns(*layout);
    EXPECT_NEAR(70.0F, rightEnd(runs[0]), 1e-3F);
    EXPECT_FLOAT_EQ(25.0F, runs[0].advances[0]);
    EXPECT_FLOAT_EQ(20.0F, runs[0].advances[2]);
    EXPECT_FLOAT_EQ(20.0F, runs[2].advances[0]);
}

TEST(Justification, StretchesOnlyBehindTheLastTab) {
    const auto layout = justified(u"a b\tc d e", 120.0F, {.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD});
    const auto plain = makeLayout(u"a b\tc d e", 120.0F, 0, {.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD});
    ASSERT_EQ(2U, metricsOf(*layout).lineCount);
    EXPECT_EQ(drawnRuns(*plain)[0].advances, drawnRuns(*layout)[0].advances);
    EXPECT_GT(clustersOf(*layout)[5].width, clustersOf(*plain)[5].width);
}

TEST(Justification, ClusterMetricsAreThoseOfTheStretchedLine) {
    const auto layout = justified(u"aa bb cc dd", metricsOf(*makeLayout(u"aa bb cc d")).width);
    const auto clusters = clustersOf(*layout);
    EXPECT_GT(clusters[2].width, clusters[8].width);
}

TEST(Justification, ChangingTheAlignmentMovesTheSameLines) {
    const auto layout = justified(u"aa bb cc dd", metricsOf(*makeLayout(u"aa bb cc d")).width);
    const auto lengths = lineLengths(*layout);
    EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING));
    EXPECT_EQ(lengths, lineLengths(*layout));
    EXPECT_FLOAT_EQ(metricsOf(*makeLayout(u"aa bb cc")).width, metricsOf(*layout).width);
}

} // namespace
} // namespace platform_test
