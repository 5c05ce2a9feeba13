#include "support/LayoutTestSupport.h"

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

/// Underlined "abc   " in a box of 5000 font units, wrapped from what follows it: the bar's left end.
float underlineLeft(DWRITE_TEXT_ALIGNMENT alignment) {
    const auto layout = makeLayout(u"abc   def", 5000.0F, 0, {.size = 2048.0F});
    EXPECT_EQ(S_OK, layout->SetTextAlignment(alignment));
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, {0, 6}));
    Recorder recorder;
    EXPECT_EQ(S_OK, layout->Draw(nullptr, &recorder, 0, 0));
    const auto bars = recorder.ofKind(DrawnCall::Underline);
    EXPECT_EQ(1U, bars.size());
    EXPECT_NEAR(designWidth("DejaVu Sans", u"abc   "), bars.at(0).width, 0.01F);
    return bars.at(0).x;
}

TEST(Alignment, HangingWhitespaceIsUnderlinedOutsideTheBoxToo) {
    const float width = designWidth("DejaVu Sans", u"abc");
    EXPECT_GT(designWidth("DejaVu Sans", u"abc   "), 5000.0F);
    EXPECT_EQ(0.0F, underlineLeft(DWRITE_TEXT_ALIGNMENT_LEADING));
    EXPECT_EQ(5000.0F - width, underlineLeft(DWRITE_TEXT_ALIGNMENT_TRAILING));
    EXPECT_EQ((5000.0F - width) / 2, underlineLeft(DWRITE_TEXT_ALIGNMENT_CENTER));
    EXPECT_EQ(0.0F, underlineLeft(DWRITE_TEXT_ALIGNMENT_JUSTIFIED));
}

} // namespace
} // namespace platform_test
