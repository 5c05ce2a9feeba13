#include <cmath>
#include <limits>

#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

// Facts of the fonts, from their tables. DejaVu Sans: 2048 units, ascent 1901, descent 483, no line gap. Liberation
// Sans: 2048 units, ascent 1854, descent 434, gap 67.
constexpr float dejaVuAscent = 1901.0F / 2048.0F;
constexpr float dejaVuHeight = 2384.0F / 2048.0F;

TEST(LayoutMetrics, OneLineOfLatinIsAsWideAsItsAdvancesAndAsHighAsItsFont) {
    const auto layout = makeLayout(u"Hello");
    const DWRITE_TEXT_METRICS metrics = metricsOf(*layout);
    // hb-shape: H 1540, e 1260, l 569, l 569, o 1253.
    EXPECT_FLOAT_EQ(20.0F * 5191.0F / 2048.0F, metrics.width);
    EXPECT_FLOAT_EQ(20.0F * dejaVuHeight, metrics.height);
    EXPECT_EQ(1U, metrics.lineCount);
    EXPECT_EQ(0.0F, metrics.left);
    EXPECT_EQ(0.0F, metrics.top);
    const auto lines = linesOf(*layout);
    ASSERT_EQ(1U, lines.size());
    EXPECT_FLOAT_EQ(20.0F * dejaVuAscent, lines[0].baseline);
    EXPECT_FLOAT_EQ(20.0F * dejaVuHeight, lines[0].height);
    EXPECT_EQ(FALSE, lines[0].isTrimmed);
}

TEST(LayoutMetrics, TheWholeLineGapLiesAboveTheAscent) {
    const auto layout = makeLayout(u"text", 0, 0, {.family = L"Liberation Sans", .size = 40.0F});
    const auto lines = linesOf(*layout);
    ASSERT_EQ(1U, lines.size());
    EXPECT_FLOAT_EQ(40.0F * (1854.0F + 67.0F) / 2048.0F, lines[0].baseline);
    EXPECT_FLOAT_EQ(40.0F * (1854.0F + 434.0F + 67.0F) / 2048.0F, lines[0].height);
}

TEST(LayoutMetrics, ALineTakesTheLargestBaselineAndTheLargestPartBelowIt) {
    const auto layout = makeLayout(u"abcd", 0, 0, {.family = L"Liberation Sans", .size = 40.0F});
    EXPECT_EQ(S_OK, layout->SetFontFamilyName(L"DejaVu Sans", {2, 2}));
    const auto lines = linesOf(*layout);
    ASSERT_EQ(1U, lines.size());
    EXPECT_NEAR(37.52F, lines[0].baseline, 0.005F);
    EXPECT_NEAR(46.95F, lines[0].height, 0.01F);
}

TEST(LayoutMetrics, WhitespaceInALargerSizeRaisesItsLine) {
    const auto layout = makeLayout(u"ab \ncd");
    EXPECT_EQ(S_OK, layout->SetFontSize(40.0F, {2, 1}));
    auto lines = linesOf(*layout);
    EXPECT_FLOAT_EQ(40.0F * dejaVuHeight, lines[0].height);
    EXPECT_FLOAT_EQ(20.0F * dejaVuHeight, lines[1].height);
    EXPECT_EQ(S_OK, layout->SetFontSize(60.0F, {3, 1}));
    lines = linesOf(*layout);
    EXPECT_FLOAT_EQ(60.0F * dejaVuHeight, lines[0].height);
}

TEST(LayoutMetrics, HeightIsTheSumOfTheLines) {
    const auto layout = makeLayout(u"one\ntwo\nthree");
    float sum = 0.0F;
    for (const DWRITE_LINE_METRICS& line : linesOf(*layout)) {
        sum += line.height;
    }
    EXPECT_FLOAT_EQ(sum, metricsOf(*layout).height);
    EXPECT_EQ(3U, metricsOf(*layout).lineCount);
}

TEST(LayoutMetrics, UniformSpacingSetsEveryLine) {
    const auto layout = makeLayout(u"one\ntwo");
    EXPECT_EQ(S_OK, layout->SetFontSize(50.0F, {0, 3}));
    EXPECT_EQ(S_OK, layout->SetLineSpacing(DWRITE_LINE_SPACING_METHOD_UNIFORM, 33.0F, 21.0F));
    for (const DWRITE_LINE_METRICS& line : linesOf(*layout)) {
        EXPECT_EQ(33.0F, line.height);
        EXPECT_EQ(21.0F, line.baseline);
    }
    EXPECT_EQ(66.0F, metricsOf(*layout).height);
}

TEST(LayoutMetrics, ProportionalSpacingMultiplies) {
    const auto layout = makeLayout(u"one");
    EXPECT_EQ(S_OK, layout->SetLineSpacing(DWRITE_LINE_SPACING_METHOD_PROPORTIONAL, 2.0F, 1.5F));
    const auto lines = linesOf(*layout);
    EXPECT_FLOAT_EQ(2.0F * 20.0F * dejaVuHeight, lines[0].height);
    EXPECT_FLOAT_EQ(1.5F * 20.0F * dejaVuAscent, lines[0].baseline);
}

TEST(LayoutMetrics, LineSpacingOfMixedFontsGoesByTheirCommonExtent) {
    // DejaVu Sans: 1901 above and 483 below of 2048; Noto Sans CJK: 1160 and 288 of 1000.
    const std::u16string text = u"a\u6F22";
    const float baseline = 1160.0F / 1000.0F * 20.0F;
    const float height = baseline + 288.0F / 1000.0F * 20.0F;
    const auto layout = makeLayout(text, 0, 0, {.locale = L"ja-jp"});
    const auto expectLine = [&layout](float expectedHeight, float expectedBaseline) {
        const DWRITE_LINE_METRICS line = linesOf(*layout).at(0);
        EXPECT_FLOAT_EQ(expectedHeight, line.height);
        EXPECT_FLOAT_EQ(expectedBaseline, line.baseline);
        for (const DrawnCall& run : drawnRuns(*layout)) {
            EXPECT_FLOAT_EQ(expectedBaseline, run.y);
        }
    };
    expectLine(height, baseline);
    EXPECT_EQ(S_OK, layout->SetLineSpacing(DWRITE_LINE_SPACING_METHOD_PROPORTIONAL, 1.5F, 2.0F));
    expectLine(height * 1.5F, baseline * 2.0F);
    EXPECT_EQ(S_OK, layout->SetLineSpacing(DWRITE_LINE_SPACING_METHOD_UNIFORM, 30.0F, 22.0F));
    expectLine(30.0F, 22.0F);
    // A larger Latin letter now reaches higher than the ideograph, and lower.
    EXPECT_EQ(S_OK, layout->SetLineSpacing(DWRITE_LINE_SPACING_METHOD_DEFAULT, 0.0F, 0.0F));
    EXPECT_EQ(S_OK, layout->SetFontSize(40.0F, {0, 1}));
    expectLine(2384.0F / 2048.0F * 40.0F, 1901.0F / 2048.0F * 40.0F);
}

TEST(LayoutNewlines, EveryNewlineCharacterEndsALine) {
    for (const char16_t newline : {u'\n', u'\r', u'\v', u'\f', u'\u0085', u'\u2028', u'\u2029'}) {
        const std::u16string text = std::u16string(u"a") + newline + u"b";
        const auto layout = makeLayout(text);
        EXPECT_EQ((std::vector<unsigned>{2, 1}), lineLengths(*layout)) << static_cast<int>(newline);
    }
}

TEST(LayoutNewlines, PairsCountOnceAndOtherOrdersTwice) {
    const auto layout = makeLayout(u"a\rb\nc\n\rd\r\n");
    const auto lines = linesOf(*layout);
    EXPECT_EQ((std::vector<unsigned>{2, 2, 2, 1, 3, 0}), lineLengths(*layout));
    std::vector<unsigned> newlines;
    for (const DWRITE_LINE_METRICS& line : lines) {
        newlines.push_back(line.newlineLength);
        EXPECT_EQ(line.newlineLength, line.trailingWhitespaceLength);
    }
    EXPECT_EQ((std::vector<unsigned>{1, 1, 1, 1, 2, 0}), newlines);
}

TEST(LayoutNewlines, ANewlineHasNoWidth) {
    const DWRITE_TEXT_METRICS plain = metricsOf(*makeLayout(u"abc"));
    const DWRITE_TEXT_METRICS ended = metricsOf(*makeLayout(u"abc\n"));
    EXPECT_EQ(plain.width, ended.width);
    EXPECT_EQ(plain.width, ended.widthIncludingTrailingWhitespace);
}

TEST(LayoutNewlines, TheLineAfterALastNewlineTakesTheNewlinesSize) {
    const auto layout = makeLayout(u"abc\n");
    EXPECT_EQ(S_OK, layout->SetFontSize(50.0F, {3, 1}));
    const auto lines = linesOf(*layout);
    ASSERT_EQ(2U, lines.size());
    EXPECT_EQ(0U, lines[1].length);
    EXPECT_FLOAT_EQ(50.0F * dejaVuHeight, lines[1].height);
    EXPECT_FLOAT_EQ(50.0F * dejaVuAscent, lines[1].baseline);
}

TEST(EmptyLayout, IsOneLineAsHighAsTheFontAtPositionZero) {
    const auto layout = makeLayout(u"");
    EXPECT_EQ(S_OK, layout->SetFontSize(50.0F, {1, 5}));
    EXPECT_FLOAT_EQ(20.0F * dejaVuHeight, metricsOf(*layout).height);
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {0, 1}));
    const DWRITE_TEXT_METRICS metrics = metricsOf(*layout);
    EXPECT_FLOAT_EQ(30.0F * dejaVuHeight, metrics.height);
    EXPECT_EQ(0.0F, metrics.width);
    EXPECT_EQ(1U, metrics.lineCount);
    EXPECT_EQ(1U, metrics.maxBidiReorderingDepth);
    const auto lines = linesOf(*layout);
    EXPECT_EQ(0U, lines[0].length);
    EXPECT_EQ(0U, lines[0].newlineLength);
    EXPECT_EQ(0U, lines[0].trailingWhitespaceLength);
    EXPECT_TRUE(clustersOf(*layout).empty());
    EXPECT_TRUE(draw(*layout).empty());
}

TEST(EmptyLayout, FollowsTheAlignment) {
    const auto layout = makeLayout(u"", 500.0F);
    EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_TRAILING));
    EXPECT_EQ(500.0F, metricsOf(*layout).left);
    EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_CENTER));
    EXPECT_EQ(250.0F, metricsOf(*layout).left);
}

TEST(LayoutMetrics, SmallBuffersGetTheCountAndWhatFits) {
    const auto layout = makeLayout(u"a\nb\nc");
    UINT32 count = 0;
    EXPECT_EQ(E_NOT_SUFFICIENT_BUFFER, layout->GetLineMetrics(nullptr, 0, &count));
    EXPECT_EQ(3U, count);
    DWRITE_LINE_METRICS lines[2] = {};
    count = 0;
    EXPECT_EQ(E_NOT_SUFFICIENT_BUFFER, layout->GetLineMetrics(lines, 2, &count));
    EXPECT_EQ(3U, count);
    EXPECT_EQ(2U, lines[1].length);
    DWRITE_CLUSTER_METRICS clusters[2] = {};
    EXPECT_EQ(E_NOT_SUFFICIENT_BUFFER, layout->GetClusterMetrics(clusters, 2, &count));
    EXPECT_EQ(5U, count);
    EXPECT_EQ(1U, clusters[1].length);
}

TEST(LayoutMetrics, TrailingWhitespaceIsLeftOutOfTheWidth) {
    const DWRITE_TEXT_METRICS plain = metricsOf(*makeLayout(u"abc"));
    const DWRITE_TEXT_METRICS spaced = metricsOf(*makeLayout(u"abc  "));
    EXPECT_EQ(plain.width, spaced.width);
    // hb-shape: a space has 651 units.
    EXPECT_FLOAT_EQ(plain.width + 20.0F * 1302.0F / 2048.0F, spaced.widthIncludingTrailingWhitespace);
    EXPECT_EQ(2U, linesOf(*makeLayout(u"abc  "))[0].trailingWhitespaceLength);
}

TEST(LayoutMetrics, SpacesAloneHaveNoWidthButTrailingWhitespace) {
    const DWRITE_TEXT_METRICS metrics = metricsOf(*makeLayout(u"   "));
    EXPECT_EQ(0.0F, metrics.width);
    EXPECT_FLOAT_EQ(20.0F * 3.0F * 651.0F / 2048.0F, metrics.widthIncludingTrailingWhitespace);
}

TEST(LayoutMetrics, NoBreakSpacesAndTabsAreNotTrailingWhitespace) {
    EXPECT_EQ(0U, linesOf(*makeLayout(u"a\u00A0"))[0].trailingWhitespaceLength);
    EXPECT_EQ(0U, linesOf(*makeLayout(u"a\u202F"))[0].trailingWhitespaceLength);
    EXPECT_EQ(1U, linesOf(*makeLayout(u"a\t\t\t\t\n"))[0].trailingWhitespaceLength);
    EXPECT_EQ(0U, linesOf(*makeLayout(u"a\u200B"))[0].trailingWhitespaceLength);
    EXPECT_EQ(0U, linesOf(*makeLayout(u"a\u00AD"))[0].trailingWhitespaceLength);
    EXPECT_EQ(1U, linesOf(*makeLayout(u"a\u3000"))[0].trailingWhitespaceLength);
    EXPECT_EQ(1U, linesOf(*makeLayout(u"a\u2003"))[0].trailingWhitespaceLength);
}

TEST(LayoutMetrics, BoxComesBackAsGiven) {
    const auto layout = makeLayout(u"abc", 123.0F, 45.0F);
    EXPECT_EQ(123.0F, metricsOf(*layout).layoutWidth);
    EXPECT_EQ(45.0F, metricsOf(*layout).layoutHeight);
}

TEST(LayoutMetrics, ReorderingDepthGrowsWithTheLevels) {
    EXPECT_EQ(1U, metricsOf(*makeLayout(u"abc")).maxBidiReorderingDepth);
    EXPECT_EQ(2U, metricsOf(*makeLayout(u"abc \u05D0\u05D1")).maxBidiReorderingDepth);
    EXPECT_EQ(3U, metricsOf(*makeLayout(u"abc \u05D0\u05D1 12")).maxBidiReorderingDepth);
    const FormatOptions rightToLeft{.reading = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT};
    EXPECT_EQ(1U, metricsOf(*makeLayout(u"\u05D0\u05D1", 0, 0, rightToLeft)).maxBidiReorderingDepth);
    EXPECT_EQ(2U, metricsOf(*makeLayout(u"\u05D0\u05D1 abc", 0, 0, rightToLeft)).maxBidiReorderingDepth);
}

TEST(LayoutMetrics, SizesAndBoxesThatAreNoNumbersEndInNumbersOrNot) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float size : {nan, infinity, 1e30F, 1e-30F}) {
        for (const float box : {nan, infinity, 0.0F, 100.0F}) {
            const auto layout = makeLayout(u"some words \t to break\n\u05D0\u05D1", box, box, {.size = size});
            EXPECT_GE(metricsOf(*layout).lineCount, 2U);
            EXPECT_FALSE(draw(*layout).empty());
            clustersOf(*layout);
        }
    }
}

TEST(LayoutMetrics, OverhangIsMeasuredFromTheBoxToTheInk) {
    const auto layout = makeLayout(u"H", 100.0F, 50.0F, {.size = 2048.0F});
    DWRITE_OVERHANG_METRICS overhang{};
    EXPECT_EQ(S_OK, layout->GetOverhangMetrics(&overhang));
    // The outline of H reaches from (201, 0) to (1339, 1493).
    EXPECT_FLOAT_EQ(-201.0F, overhang.left);
    EXPECT_FLOAT_EQ(1493.0F - 1901.0F, overhang.top);
    EXPECT_FLOAT_EQ(1339.0F - 100.0F, overhang.right);
    EXPECT_FLOAT_EQ(1901.0F - 50.0F, overhang.bottom);
}

TEST(LayoutMetrics, TextWithoutInkOverhangsNowhere) {
    const auto layout = makeLayout(u"  ", 100.0F, 50.0F);
    DWRITE_OVERHANG_METRICS overhang{1, 1, 1, 1};
    EXPECT_EQ(S_OK, layout->GetOverhangMetrics(&overhang));
    EXPECT_EQ(0.0F, overhang.left);
    EXPECT_EQ(0.0F, overhang.top);
    EXPECT_EQ(-100.0F, overhang.right);
    EXPECT_EQ(-50.0F, overhang.bottom);
}

TEST(LayoutMetrics, MinimumWidthIsTheWidestWord) {
    const auto layout = makeLayout(u"a longest word");
    FLOAT width = 0.0F;
    EXPECT_EQ(S_OK, layout->DetermineMinWidth(&width));
    EXPECT_FLOAT_EQ(metricsOf(*makeLayout(u"longest")).width, width);
    EXPECT_EQ(E_INVALIDARG, layout->DetermineMinWidth(nullptr));
}

TEST(LayoutMetrics, NarrowestWidthHoldsWordsAsLinesShapeThem) {
    // Kerning draws the hyphen and the letter after it together, which a break undoes.
    const std::u16string text = u"AAAAAA-TV VA";
    const auto layout = makeLayout(text);
    FLOAT width = 0.0F;
    EXPECT_EQ(S_OK, layout->DetermineMinWidth(&width));
    EXPECT_FLOAT_EQ(metricsOf(*makeLayout(u"AAAAAA-")).width, width);
    EXPECT_EQ(S_OK, layout->SetMaxWidth(width));
    EXPECT_EQ((std::vector<std::u16string>{u"AAAAAA-", u"TV VA"}), lineTexts(text, *layout));
    EXPECT_FLOAT_EQ(width, metricsOf(*layout).width);
}

} // namespace
} // namespace platform_test
