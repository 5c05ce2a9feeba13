#include <limits>

#include <utility>

#include "lines/LineBreaker.h"
#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

using Texts = std::vector<std::u16string>;

TEST(Tabs, AdvanceToTheNextStopFromTheLinesStart) {
    const auto layout = makeLayout(u"\ta\tb");
    EXPECT_EQ(S_OK, layout->SetIncrementalTabStop(100.0F));
    const auto clusters = clustersOf(*layout);
    ASSERT_EQ(4U, clusters.size());
    EXPECT_EQ(100.0F, clusters[0].width);
    EXPECT_FLOAT_EQ(100.0F, clusters[1].width + clusters[2].width);
    EXPECT_FLOAT_EQ(200.0F + clusters[3].width, metricsOf(*layout).width);
    EXPECT_EQ(1U, clusters[0].length);
    EXPECT_EQ(1U, clusters[0].isWhitespace);
}

TEST(Tabs, DefaultStopIsFourTimesTheFormatsSize) {
    EXPECT_FLOAT_EQ(80.0F, clustersOf(*makeLayout(u"\ta"))[0].width);
}

TEST(Tabs, ATabOnAStopGoesToTheNextOne) {
    const auto layout = makeLayout(u"\t\ta");
    EXPECT_EQ(80.0F, clustersOf(*layout)[1].width);
    EXPECT_FLOAT_EQ(40.0F, platform::tabWidth(40.0F, 40.0F));
    EXPECT_FLOAT_EQ(40.001F, platform::tabWidth(39.999F, 40.0F));
    EXPECT_FLOAT_EQ(0.5F, platform::tabWidth(39.5F, 40.0F));
}

TEST(Tabs, ATabIsARunWithoutGlyphs) {
    const auto runs = drawnRuns(*makeLayout(u"a\tb"));
    ASSERT_EQ(3U, runs.size());
    EXPECT_EQ(L"\t", runs[1].text);
    EXPECT_TRUE(runs[1].glyphs.empty());
    EXPECT_FLOAT_EQ(80.0F, runs[2].x);
}

TEST(Tabs, StartAnewOnEveryLineAndStayWithinTheBox) {
    const auto layout = makeLayout(u"aaaa\tbbbb", 100.0F, 0, {.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD});
    EXPECT_EQ((std::vector<unsigned>{5, 4}), lineLengths(*layout));
    EXPECT_LE(metricsOf(*layout).width, 100.0F);
    EXPECT_EQ(S_OK, layout->SetMaxWidth(60.0F));
    EXPECT_EQ((std::vector<unsigned>{5, 4}), lineLengths(*layout));
    EXPECT_LE(metricsOf(*layout).width, 60.0F);
}

TEST(Tabs, StopsThatAreNoNumbersGiveTabsWithoutWidth) {
    const auto layout = makeLayout(u"a\tb", 0, 0);
    EXPECT_EQ(S_OK, layout->SetIncrementalTabStop(std::numeric_limits<float>::infinity()));
    EXPECT_EQ(0.0F, clustersOf(*layout)[1].width);
    EXPECT_EQ(S_OK, layout->SetIncrementalTabStop(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_EQ(0.0F, clustersOf(*layout)[1].width);
}

// From here on lengths are font units: DejaVu Sans at its design size, tab stops every 8192.

constexpr float stop = 4 * 2048.0F;

float widthOf(std::u16string_view text) {
    return designWidth("DejaVu Sans", text);
}

Reference<IDWriteTextLayout> aligned(std::u16string_view text, DWRITE_TEXT_ALIGNMENT alignment, float box) {
    auto layout = makeLayout(text, box, 0, {.size = 2048.0F});
    EXPECT_EQ(S_OK, layout->SetTextAlignment(alignment));
    return layout;
}

TEST(Tabs, AreMeasuredBeforeALineIsAligned) {
    constexpr float box = 20000.0F;
    const float width = stop + widthOf(u"cd");
    for (const auto& [alignment, left] :
         {std::pair{DWRITE_TEXT_ALIGNMENT_LEADING, 0.0F}, std::pair{DWRITE_TEXT_ALIGNMENT_TRAILING, box - width},
          std::pair{DWRITE_TEXT_ALIGNMENT_CENTER, (box - width) / 2},
          std::pair{DWRITE_TEXT_ALIGNMENT_JUSTIFIED, 0.0F}}) {
        const auto layout = aligned(u"ab\tcd", alignment, box);
        const auto lines = placedRuns(*layout);
        ASSERT_EQ(1U, lines.size());
        ASSERT_EQ((Texts{u"ab", u"cd"}), visualTexts(lines[0]));
        EXPECT_NEAR(left, lines[0][0].left, 1e-2F);
        EXPECT_NEAR(left + stop, lines[0][1].left, 1e-2F);
        EXPECT_NEAR(left, metricsOf(*layout).left, 1e-2F);
        EXPECT_NEAR(width, metricsOf(*layout).width, 1e-2F);
    }
}

TEST(Tabs, OfWrappedLinesCountFromEachLinesOwnStart) {
    const std::u16string text = u"ab\tcd\tef gh\ti";
    const float box = 2 * stop + widthOf(u"ef") + 10.0F;
    for (const auto alignment : {DWRITE_TEXT_ALIGNMENT_LEADING, DWRITE_TEXT_ALIGNMENT_TRAILING}) {
        const auto layout = aligned(text, alignment, box);
        ASSERT_EQ((Texts{u"ab\tcd\tef ", u"gh\ti"}), lineTexts(text, *layout));
        const auto lines = placedRuns(*layout);
        ASSERT_EQ(3U, lines[0].size());
        ASSERT_EQ(2U, lines[1].size());
        const bool isLeading = alignment == DWRITE_TEXT_ALIGNMENT_LEADING;
        const float first = isLeading ? 0.0F : 10.0F;
        EXPECT_NEAR(first + stop, lines[0][1].left, 1e-2F);
        EXPECT_NEAR(first + 2 * stop, lines[0][2].left, 1e-2F);
        const float second = isLeading ? 0.0F : box - stop - widthOf(u"i");
        EXPECT_NEAR(second, lines[1][0].left, 1e-2F);
        EXPECT_NEAR(second + stop, lines[1][1].left, 1e-2F);
    }
}

TEST(Tabs, PartTheTextOfALineIntoStretchesThatAreReorderedOneByOne) {
    const auto lines = placedRuns(*aligned(u"\u05D0\u05D1 1\t\u05D2\u05D3 2", DWRITE_TEXT_ALIGNMENT_LEADING, 0.0F));
    ASSERT_EQ(1U, lines.size());
    ASSERT_EQ((Texts{u"1", u"\u05D0\u05D1 ", u"2", u"\u05D2\u05D3 "}), visualTexts(lines[0]));
    EXPECT_NEAR(0.0F, lines[0][0].left, 1e-2F);
    EXPECT_NEAR(stop, lines[0][2].left, 1e-2F);
    EXPECT_NEAR(stop + widthOf(u"2\u05D2\u05D3 "), lines[0][3].right, 1e-2F);
}

TEST(Tabs, StandBehindSpacesAtTheParagraphsLevel) {
    // The space before a tab is at the paragraph's level, as at a line's end.
    const auto lines = placedRuns(*aligned(u"\u05D0\u05D1 \tx", DWRITE_TEXT_ALIGNMENT_LEADING, 0.0F));
    ASSERT_EQ((Texts{u"\u05D0\u05D1", u" ", u"x"}), visualTexts(lines[0]));
    EXPECT_EQ(0U, lines[0][1].level);
    EXPECT_NEAR(stop, lines[0][2].left, 1e-2F);
}

TEST(Tabs, HangWithTheSpacesThatLeaveThemNoRoom) {
    const std::u16string text = u"ab   \tcd";
    const float box = widthOf(u"ab") + 10.0F;
    const auto layout = aligned(text, DWRITE_TEXT_ALIGNMENT_TRAILING, box);
    ASSERT_EQ((Texts{u"ab   \t", u"cd"}), lineTexts(text, *layout));
    EXPECT_NEAR(10.0F, placedRuns(*layout)[0][0].left, 1e-2F);
    EXPECT_NEAR(widthOf(u"ab"), metricsOf(*layout).width, 1e-2F);
    EXPECT_EQ(4U, linesOf(*layout)[0].trailingWhitespaceLength);
    EXPECT_EQ(0.0F, clustersOf(*layout)[5].width);
}

TEST(Tabs, NeedNoRoomAtALinesEnd) {
    FLOAT width = 0.0F;
    EXPECT_EQ(S_OK, aligned(u"ab\tcd", DWRITE_TEXT_ALIGNMENT_LEADING, 0.0F)->DetermineMinWidth(&width));
    EXPECT_NEAR(widthOf(u"ab"), width, 1e-2F);
    // No line breaks between a tab and a closing bracket.
    EXPECT_EQ(S_OK, aligned(u"ab\t)", DWRITE_TEXT_ALIGNMENT_LEADING, 0.0F)->DetermineMinWidth(&width));
    EXPECT_NEAR(stop + widthOf(u")"), width, 1e-2F);
}

TEST(Tabs, AtALinesEndCountAsWidth) {
    constexpr float box = 20000.0F;
    const auto layout = aligned(u"ab\t", DWRITE_TEXT_ALIGNMENT_TRAILING, box);
    EXPECT_NEAR(stop, metricsOf(*layout).width, 1e-2F);
    EXPECT_NEAR(box - stop, placedRuns(*layout)[0][0].left, 1e-2F);
    EXPECT_EQ(0U, linesOf(*layout)[0].trailingWhitespaceLength);
}

TEST(Tabs, DoNotDependOnTheWidthsAskedBefore) {
    const auto ends = [](IDWriteTextLayout& layout) {
        EXPECT_EQ(S_OK, layout.SetMaxWidth(60.0F));
        std::vector<std::pair<unsigned, unsigned>> lengths;
        for (const DWRITE_LINE_METRICS& line : linesOf(layout)) {
            lengths.emplace_back(line.length, line.trailingWhitespaceLength);
        }
        return lengths;
    };
    const auto make = [] {
        return makeLayout(u"internationalization\tb", 400.0F, 0, {.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD});
    };
    const auto asked = make();
    EXPECT_EQ(1U, linesOf(*asked).size());
    // The tab has no room in the narrow box, so it hangs.
    EXPECT_EQ((std::vector<std::pair<unsigned, unsigned>>{{21, 1}, {1, 0}}), ends(*asked));
    EXPECT_EQ(ends(*make()), ends(*asked));
}

} // namespace
} // namespace platform_test
