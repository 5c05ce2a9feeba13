#include "support/LayoutTestSupport.h"

// Lines that break where shapes depend on both sides of the break.

namespace platform_test {
namespace {

/// The advances of a text drawn as one run.
std::vector<float> advancesOf(std::u16string_view text) {
    return drawnRuns(*makeLayout(text)).at(0).advances;
}

TEST(BreaksAndShapes, KerningDoesNotReachAcrossABreak) {
    // A and V are kerned, so the A at the end of a line is wider than the one inside it.
    const std::u16string text = u"AVAVAVAV";
    const auto layout =
        makeLayout(text, metricsOf(*makeLayout(u"AVA")).width + 0.5F, 0, {.wrapping = DWRITE_WORD_WRAPPING_CHARACTER});
    ASSERT_EQ((std::vector<unsigned>{3, 3, 2}), lineLengths(*layout));
    const auto runs = drawnRuns(*layout);
    EXPECT_EQ(advancesOf(u"AVA"), runs[0].advances);
    EXPECT_EQ(advancesOf(u"VAV"), runs[1].advances);
    EXPECT_EQ(advancesOf(u"AV"), runs[2].advances);
    EXPECT_EQ(3U, runs[1].textPosition);
    EXPECT_EQ(L"VAV", runs[1].text);
    EXPECT_EQ(8U, clustersOf(*layout).size());
    EXPECT_FLOAT_EQ(metricsOf(*makeLayout(u"AVA")).width,
                    clustersOf(*layout)[0].width + clustersOf(*layout)[1].width + clustersOf(*layout)[2].width);
}

TEST(BreaksAndShapes, ALineThatGetsTooWideEndsEarlier) {
    // As measured inside the text two letters fit, but not with the full width that the second has at a line's end.
    const float kerned = clustersOf(*makeLayout(u"VAV"))[0].width + clustersOf(*makeLayout(u"VAV"))[1].width;
    const float atEnd = metricsOf(*makeLayout(u"VA")).width;
    ASSERT_LT(kerned, atEnd);
    const auto layout = makeLayout(u"VAVA", (kerned + atEnd) / 2, 0, {.wrapping = DWRITE_WORD_WRAPPING_CHARACTER});
    EXPECT_EQ((std::vector<unsigned>{1, 1, 1, 1}), lineLengths(*layout));
    EXPECT_LE(metricsOf(*layout).width, (kerned + atEnd) / 2);
}

TEST(BreaksAndShapes, AWiderBoxGetsTheOldShapesBack) {
    const auto layout = makeLayout(u"AVAVAVAV", 30.0F, 0, {.wrapping = DWRITE_WORD_WRAPPING_CHARACTER});
    EXPECT_LT(1U, metricsOf(*layout).lineCount);
    EXPECT_EQ(S_OK, layout->SetMaxWidth(0.0F));
    EXPECT_EQ(advancesOf(u"AVAVAVAV"), drawnRuns(*layout)[0].advances);
}

TEST(BreaksAndShapes, ALigatureIsNeverCut) {
    const auto layout = makeLayout(u"ffi", 1.0F, 0, {.wrapping = DWRITE_WORD_WRAPPING_CHARACTER});
    EXPECT_EQ(1U, metricsOf(*layout).lineCount);
}

TEST(BreaksAndShapes, ArabicLettersKeepTheirFormsAcrossABreak) {
    const std::u16string text = u"\u0628\u0628\u0628\u0628";
    const FormatOptions options{.family = L"Noto Sans Arabic",
                                .wrapping = DWRITE_WORD_WRAPPING_CHARACTER,
                                .reading = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT};
    std::vector<unsigned> whole;
    for (const DrawnCall& run : drawnRuns(*makeLayout(text, 0, 0, options))) {
        whole.insert(whole.end(), run.glyphs.begin(), run.glyphs.end());
    }
    const auto layout = makeLayout(text, 1.0F, 0, options);
    EXPECT_EQ(4U, metricsOf(*layout).lineCount);
    std::vector<unsigned> broken;
    for (const DrawnCall& run : drawnRuns(*layout)) {
        broken.insert(broken.end(), run.glyphs.begin(), run.glyphs.end());
    }
    EXPECT_EQ(whole, broken);
}

TEST(BreaksAndShapes, EveryPositionIsDrawnExactlyOnce) {
    const std::u16string text =
        u"AVATAR To. Yes, \"Wave\" \u0628\u0646\u064E\u0627\u0621 To 12 \u05D0\u05D1 AV. T-AVA\tWAVE";
    for (const auto wrapping :
         {DWRITE_WORD_WRAPPING_WRAP, DWRITE_WORD_WRAPPING_WHOLE_WORD, DWRITE_WORD_WRAPPING_CHARACTER}) {
        for (float width = 1.0F; width < 700.0F; width += 13.0F) {
            const auto layout = makeLayout(text, width, 0, {.wrapping = wrapping});
            unsigned position = 0;
            for (const DrawnCall& run : drawnRuns(*layout)) {
                EXPECT_EQ(position, run.textPosition);
                position += static_cast<unsigned>(run.text.size());
            }
            EXPECT_EQ(text.size(), position);
            unsigned ofClusters = 0;
            for (const DWRITE_CLUSTER_METRICS& cluster : clustersOf(*layout)) {
                ofClusters += cluster.length;
            }
            EXPECT_EQ(text.size(), ofClusters);
            unsigned ofLines = 0;
            for (const unsigned length : lineLengths(*layout)) {
                ofLines += length;
            }
            EXPECT_EQ(text.size(), ofLines);
            if (wrapping != DWRITE_WORD_WRAPPING_WHOLE_WORD && width > 25.0F) {
                EXPECT_LE(metricsOf(*layout).width, width);
            }
        }
    }
}

TEST(BreaksAndShapes, DirectedTextInsideAnItemBreaksAtManyWidths) {
    const std::u16string text(3000, u'\u0628');
    const auto layout = makeLayout(text, 50.0F, 0, {.family = L"Noto Sans Arabic"});
    unsigned sum = 0;
    for (const unsigned length : lineLengths(*layout)) {
        sum += length;
    }
    EXPECT_EQ(3000U, sum);
    EXPECT_LE(metricsOf(*layout).width, 50.0F);
}

} // namespace
} // namespace platform_test
