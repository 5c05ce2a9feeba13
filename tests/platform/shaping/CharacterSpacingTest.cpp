#include <limits>

#include "support/LayoutTestSupport.h"

// The room that a caller puts between clusters. Lengths are design units of the fonts, as fontTools reads them: both
// have 2048 to the em.

namespace platform_test {
namespace {

constexpr DWRITE_TEXT_RANGE everything{0, 0xFFFFFFFF};
constexpr float designSize = 2048.0F;

struct Spacing {
    float leading = 0.0F;
    float trailing = 0.0F;
    float minimum = 0.0F;
};

Reference<IDWriteTextLayout1> spaced(std::u16string_view text, const Spacing& spacing, float maxWidth = 0.0F,
                                     FormatOptions options = {}) {
    options.size = designSize;
    auto layout = laterOf(*makeLayout(text, maxWidth, 0.0F, options));
    EXPECT_EQ(S_OK, layout->SetCharacterSpacing(spacing.leading, spacing.trailing, spacing.minimum, everything));
    return layout;
}

std::vector<float> widthsOf(IDWriteTextLayout& layout) {
    std::vector<float> widths;
    for (const DWRITE_CLUSTER_METRICS& cluster : clustersOf(layout)) {
        widths.push_back(cluster.width);
    }
    return widths;
}

/// Left and right of a layout's ink in a box without width, and so relative to the box's left side.
struct InkSides {
    float left = 0.0F;
    float right = 0.0F;
};

InkSides inkSides(IDWriteTextLayout& layout) {
    DWRITE_OVERHANG_METRICS overhang{};
    EXPECT_EQ(S_OK, layout.GetOverhangMetrics(&overhang));
    return {-overhang.left, layout.GetMaxWidth() + overhang.right};
}

TEST(CharacterSpacing, IsNoneAtFirstAndReadBackAsSet) {
    const auto layout = laterOf(*makeLayout(u"text"));
    FLOAT leading = 1.0F;
    FLOAT trailing = 1.0F;
    FLOAT minimum = 1.0F;
    DWRITE_TEXT_RANGE range{};
    EXPECT_EQ(S_OK, layout->GetCharacterSpacing(2, &leading, &trailing, &minimum, &range));
    EXPECT_EQ(0.0F, leading);
    EXPECT_EQ(0.0F, trailing);
    EXPECT_EQ(0.0F, minimum);
    EXPECT_EQ(0U, range.startPosition);
    EXPECT_EQ(everything.length, range.length);
    EXPECT_EQ(S_OK, layout->SetCharacterSpacing(-1.5F, 2.5F, 3.5F, {1, 2}));
    EXPECT_EQ(S_OK, layout->GetCharacterSpacing(2, &leading, &trailing, &minimum, &range));
    EXPECT_EQ(-1.5F, leading);
    EXPECT_EQ(2.5F, trailing);
    EXPECT_EQ(3.5F, minimum);
    EXPECT_EQ(1U, range.startPosition);
    EXPECT_EQ(2U, range.length);
    EXPECT_EQ(S_OK, layout->GetCharacterSpacing(3, &leading, &trailing, &minimum));
    EXPECT_EQ(0.0F, trailing);
}

TEST(CharacterSpacing, NegativeMinimaAndImpossibleRangesAreRefused) {
    const auto layout = spaced(u"text", {});
    const std::vector<float> natural = widthsOf(*layout);
    EXPECT_EQ(E_INVALIDARG, layout->SetCharacterSpacing(1.0F, 1.0F, -0.5F, everything));
    EXPECT_EQ(E_INVALIDARG, layout->SetCharacterSpacing(1.0F, 1.0F, 0.0F, {10, 0xFFFFFFFF}));
    EXPECT_EQ(natural, widthsOf(*layout));
}

TEST(CharacterSpacing, NumbersThatAreNoneEndInMetrics) {
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float endless = std::numeric_limits<float>::infinity();
    for (const Spacing& spacing : {Spacing{none, none, none}, {endless, -endless, 0.0F}, {0.0F, 0.0F, endless}}) {
        const auto layout = spaced(u"some words to break", spacing, 3000.0F);
        EXPECT_LT(0U, metricsOf(*layout).lineCount);
        EXPECT_EQ(19U, clustersOf(*layout).size());
        EXPECT_FALSE(draw(*layout).empty());
    }
}

TEST(CharacterSpacing, WidensEveryClusterOnBothSides) {
    // A 1401, i 569 in DejaVu Sans.
    EXPECT_EQ((std::vector<float>{1401, 569}), widthsOf(*spaced(u"Ai", {})));
    EXPECT_EQ((std::vector<float>{1531, 699}), widthsOf(*spaced(u"Ai", {100, 30})));
    EXPECT_EQ((std::vector<float>{1271, 439}), widthsOf(*spaced(u"Ai", {-100, -30})));
    EXPECT_EQ(2230.0F, metricsOf(*spaced(u"Ai", {100, 30})).width);
}

TEST(CharacterSpacing, NoClusterIsNarrowerThanTheMinimum) {
    EXPECT_EQ((std::vector<float>{1401, 1000}), widthsOf(*spaced(u"Ai", {0, 0, 1000})));
    EXPECT_EQ((std::vector<float>{1531, 1130}), widthsOf(*spaced(u"Ai", {100, 30, 1000})));
    EXPECT_EQ((std::vector<float>{50, 50}), widthsOf(*spaced(u"Ai", {-1000, -1000, 50})));
    EXPECT_EQ((std::vector<float>{0, 0}), widthsOf(*spaced(u"Ai", {-1000, -1000, 0})));
    EXPECT_EQ((std::vector<float>{150, 150}), widthsOf(*spaced(u"Ai", {100, -2000, 50})));
}

TEST(CharacterSpacing, AMinimumTakesBackWhatDrewTheClusterIn) {
    const auto shift = [](const Spacing& spacing) {
        return inkSides(*spaced(u"i", spacing)).left - inkSides(*spaced(u"i", {})).left;
    };
    EXPECT_FLOAT_EQ(215.5F, shift({0, 0, 1000}));
    EXPECT_FLOAT_EQ(315.5F, shift({100, 30, 1000}));
    EXPECT_FLOAT_EQ(-519.0F, shift({-2000, 0, 50}));
    EXPECT_FLOAT_EQ(0.0F, shift({0, -2000, 50}));
    EXPECT_FLOAT_EQ(-259.5F, shift({-1000, -1000, 50}));
    EXPECT_FLOAT_EQ(100.0F, shift({100, -2000, 50}));
}

TEST(CharacterSpacing, GlyphsMoveByTheLeadingRoomInReadingOrder) {
    const InkSides latin = inkSides(*spaced(u"x", {}));
    EXPECT_FLOAT_EQ(latin.left + 100.0F, inkSides(*spaced(u"x", {100, 30})).left);
    EXPECT_FLOAT_EQ(latin.right + 100.0F, inkSides(*spaced(u"x", {100, 30})).right);
    const FormatOptions hebrew{.reading = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT};
    const InkSides alef = inkSides(*spaced(u"\u05D0", {}, 5000.0F, hebrew));
    const InkSides moved = inkSides(*spaced(u"\u05D0", {100, 30}, 5000.0F, hebrew));
    EXPECT_FLOAT_EQ(alef.left - 100.0F, moved.left);
    EXPECT_FLOAT_EQ(alef.right - 100.0F, moved.right);
}

TEST(CharacterSpacing, OutlinesStandWhereTheInkIsMeasured) {
    const FormatOptions hebrew{.reading = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT};
    for (const std::u16string_view text : {u"AVq\u0301i", u"\u05D0\u05D1\u05B8\u05D2"}) {
        for (const Spacing& spacing : {Spacing{100, 30}, {0, 300}, {300, 0}, {-50, -10}, {0, 0, 3000}}) {
            for (const FormatOptions& options : {FormatOptions(), hebrew}) {
                const auto layout = spaced(text, spacing, 20000.0F, options);
                const std::vector<DrawnCall> runs = drawnRuns(*layout);
                ASSERT_EQ(1U, runs.size());
                EXPECT_NEAR(inkSides(*layout).left, drawnInk(*layout).left, 0.1);
                EXPECT_NEAR(inkSides(*layout).right, drawnInk(*layout).right, 0.1);
                EXPECT_NEAR(metricsOf(*layout).width, runs[0].advance(), 0.01);
            }
        }
    }
}

TEST(CharacterSpacing, AMarkMovesWithItsBase) {
    // q 1300 with U+0301, which is drawn 165 to the left of where it would start; there is no glyph for both.
    const DrawnCall run = drawnRuns(*spaced(u"q\u0301x", {100, 30})).at(0);
    EXPECT_EQ((std::vector<float>{1430, 0, 1342}), run.advances);
    EXPECT_EQ(100.0F, run.offsets[0].advanceOffset);
    EXPECT_EQ(-195.0F, run.offsets[1].advanceOffset);
    EXPECT_EQ(100.0F, run.offsets[2].advanceOffset);
}

TEST(CharacterSpacing, NeitherRunsNorShapesArePartedByIt) {
    // The ligature of "ffi" is one cluster of 1980, and A and V are kerned.
    const auto ligature = spaced(u"office", {});
    EXPECT_EQ(S_OK, ligature->SetCharacterSpacing(100.0F, 30.0F, 0.0F, {0, 2}));
    EXPECT_EQ((std::vector<float>{1383, 2110, 1126, 1260}), widthsOf(*ligature));
    EXPECT_EQ(1U, drawnRuns(*ligature).size());
    const auto pair = spaced(u"AV", {});
    const std::vector<float> kerned = widthsOf(*pair);
    ASSERT_LT(kerned[0], 1401.0F);
    EXPECT_EQ(S_OK, pair->SetCharacterSpacing(0.0F, 50.0F, 0.0F, {1, 1}));
    EXPECT_EQ((std::vector<float>{kerned[0], kerned[1] + 50.0F}), widthsOf(*pair));
    EXPECT_EQ(1U, drawnRuns(*pair).size());
}

TEST(CharacterSpacing, AClusterIsSpacedAsItsFirstPositionSays) {
    const auto layout = spaced(u"office", {});
    EXPECT_EQ(S_OK, layout->SetCharacterSpacing(100.0F, 0.0F, 0.0F, {2, 2}));
    EXPECT_EQ((std::vector<float>{1253, 1980, 1126, 1260}), widthsOf(*layout));
}

TEST(CharacterSpacing, TabsNewlinesControlsAndObjectsStayAsTheyAre) {
    Picture picture;
    const auto layout = spaced(u"a\tb\r\nc\u0001\u200Dd", {});
    EXPECT_EQ(S_OK, layout->SetInlineObject(&picture, {8, 1}));
    const std::vector<float> natural = widthsOf(*layout);
    EXPECT_EQ(S_OK, layout->SetCharacterSpacing(100.0F, 30.0F, 7000.0F, everything));
    const std::vector<float> widths = widthsOf(*layout);
    ASSERT_EQ(natural.size(), widths.size());
    for (const std::size_t letter : {0U, 2U, 5U}) {
        EXPECT_EQ(7130.0F, widths[letter]);
    }
    for (const std::size_t other : {3U, 4U, 6U, 7U, 8U}) {
        EXPECT_EQ(natural[other], widths[other]) << other;
    }
    // A tab goes to the next stop behind the wider letter: the stops are 8192 apart.
    EXPECT_EQ(8192.0F, natural[0] + natural[1]);
    EXPECT_EQ(8192.0F, widths[0] + widths[1]);
}

TEST(CharacterSpacing, LinesAreFilledWithWidenedClusters) {
    // x 1212, space 651: three letters and two spaces.
    const float spaces = 2 * 651.0F;
    const auto layout = spaced(u"x x x", {0, 100}, 3 * 1212.0F + spaces + 500.0F);
    EXPECT_EQ((std::vector<unsigned>{5}), lineLengths(*layout));
    EXPECT_EQ(S_OK, layout->SetMaxWidth(3 * 1212.0F + spaces + 499.0F));
    EXPECT_EQ((std::vector<unsigned>{4, 1}), lineLengths(*layout));
    // The space at the end hangs with its room; the last letter's room is its own.
    EXPECT_FLOAT_EQ(2 * 1312.0F + 751.0F, metricsOf(*layout).width);
    EXPECT_FLOAT_EQ(2 * 1312.0F + 2 * 751.0F, metricsOf(*layout).widthIncludingTrailingWhitespace);
}

TEST(CharacterSpacing, HoldsForShapesThatABreakChanges) {
    const FormatOptions options{.wrapping = DWRITE_WORD_WRAPPING_CHARACTER};
    const float box = metricsOf(*spaced(u"AVA", {20, 30})).width + 5.0F;
    const auto layout = spaced(u"AVAVAVAV", {20, 30}, box, options);
    ASSERT_EQ((std::vector<unsigned>{3, 3, 2}), lineLengths(*layout));
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ(3U, runs.size());
    EXPECT_EQ(drawnRuns(*spaced(u"AVA", {20, 30}))[0].advances, runs[0].advances);
    EXPECT_EQ(drawnRuns(*spaced(u"VAV", {20, 30}))[0].advances, runs[1].advances);
    EXPECT_EQ(drawnRuns(*spaced(u"AV", {20, 30}))[0].advances, runs[2].advances);
    for (const DrawnCall& run : runs) {
        for (const DWRITE_GLYPH_OFFSET& offset : run.offsets) {
            EXPECT_EQ(20.0F, offset.advanceOffset);
        }
    }
}

TEST(CharacterSpacing, TheNarrowestBoxHoldsWidenedWords) {
    FLOAT narrowest = 0.0F;
    EXPECT_EQ(S_OK, spaced(u"xx x", {70, 30})->DetermineMinWidth(&narrowest));
    EXPECT_FLOAT_EQ(2 * 1312.0F, narrowest);
}

TEST(CharacterSpacing, AHyphenThatShowsIsSpacedLikeTheText) {
    // The hyphen U+2010 of DejaVu Sans is 739 wide.
    const auto layout = spaced(u"xx\u00ADx", {70, 30}, 2 * 1312.0F + 839.0F);
    ASSERT_EQ((std::vector<unsigned>{3, 1}), lineLengths(*layout));
    EXPECT_EQ((std::vector<float>{1312, 1312, 839, 1312}), widthsOf(*layout));
    EXPECT_EQ(S_OK, layout->SetMaxWidth(0.0F));
    EXPECT_EQ((std::vector<float>{1312, 1312, 0, 1312}), widthsOf(*layout));
}

TEST(CharacterSpacing, JustifiedLinesGetTheRestAtTheirSpaces) {
    const auto layout = spaced(u"x x x x", {100, 0}, 7000.0F);
    EXPECT_EQ(S_OK, layout->SetTextAlignment(DWRITE_TEXT_ALIGNMENT_JUSTIFIED));
    ASSERT_EQ((std::vector<unsigned>{6, 1}), lineLengths(*layout));
    const std::vector<float> widths = widthsOf(*layout);
    EXPECT_EQ(1312.0F, widths[0]);
    EXPECT_FLOAT_EQ((7000.0F - 3 * 1312.0F) / 2.0F, widths[1]);
}

TEST(CharacterSpacing, HitTestsSeeWidenedClusters) {
    const auto layout = spaced(u"xx", {100, 200});
    FLOAT x = 0.0F;
    FLOAT y = 0.0F;
    DWRITE_HIT_TEST_METRICS metrics{};
    EXPECT_EQ(S_OK, layout->HitTestTextPosition(1, FALSE, &x, &y, &metrics));
    EXPECT_FLOAT_EQ(1512.0F, x);
    EXPECT_FLOAT_EQ(1512.0F, metrics.width);
    BOOL isTrailing = FALSE;
    BOOL isInside = FALSE;
    EXPECT_EQ(S_OK, layout->HitTestPoint(1505.0F, 10.0F, &isTrailing, &isInside, &metrics));
    EXPECT_EQ(0U, metrics.textPosition);
    EXPECT_EQ(TRUE, isInside);
}

TEST(CharacterSpacing, ChangesAreSeenAfterAnAnswer) {
    const auto layout = spaced(u"xx", {100, 0});
    EXPECT_EQ(2 * 1312.0F, metricsOf(*layout).width);
    EXPECT_EQ(S_OK, layout->SetCharacterSpacing(0.0F, 0.0F, 0.0F, {0, 1}));
    EXPECT_EQ(1212.0F + 1312.0F, metricsOf(*layout).width);
    EXPECT_EQ(S_OK, layout->SetCharacterSpacing(0.0F, 0.0F, 0.0F, everything));
    EXPECT_EQ(2 * 1212.0F, metricsOf(*layout).width);
}

TEST(CharacterSpacing, ARangeForEveryClusterIsLikeOneForAll) {
    std::u16string text;
    for (int i = 0; i < 200; ++i) {
        text += u"AV and so on, ";
    }
    const auto layout = spaced(text, {}, 40000.0F);
    for (UINT32 i = 0; i < text.size(); ++i) {
        EXPECT_EQ(S_OK, layout->SetCharacterSpacing(20.0F, 30.0F + static_cast<float>(i % 2), 0.0F, {i, 1}));
    }
    for (UINT32 i = 0; i < text.size(); ++i) {
        EXPECT_EQ(S_OK, layout->SetCharacterSpacing(20.0F, 30.0F, 0.0F, {i, 1}));
    }
    const auto whole = spaced(text, {20, 30}, 40000.0F);
    EXPECT_EQ(widthsOf(*whole), widthsOf(*layout));
    EXPECT_EQ(lineLengths(*whole), lineLengths(*layout));
    DWRITE_TEXT_RANGE range{};
    FLOAT value = 0.0F;
    EXPECT_EQ(S_OK, layout->GetCharacterSpacing(0, &value, &value, &value, &range));
    EXPECT_EQ(text.size(), range.length);
}

} // namespace
} // namespace platform_test
