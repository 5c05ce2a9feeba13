#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

using Texts = std::vector<std::wstring>;

constexpr auto rightToLeft = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT;

std::vector<unsigned> levelsOf(const std::vector<DrawnCall>& runs) {
    std::vector<unsigned> levels;
    for (const DrawnCall& run : runs) {
        levels.push_back(run.bidiLevel);
    }
    return levels;
}

TEST(Runs, PlainTextIsOneRunWithItsSpaces) {
    EXPECT_EQ((Texts{L"some words, 12 "}), runTexts(drawnRuns(*makeLayout(u"some words, 12 "))));
}

TEST(Runs, AreCutWhereFontSizeAndLocaleChange) {
    const auto layout = makeLayout(u"abcdefgh");
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {2, 2}));
    EXPECT_EQ(S_OK, layout->SetFontWeight(DWRITE_FONT_WEIGHT_BOLD, {4, 2}));
    EXPECT_EQ(S_OK, layout->SetLocaleName(L"fr-fr", {6, 1}));
    const auto runs = drawnRuns(*layout);
    EXPECT_EQ((Texts{L"ab", L"cd", L"ef", L"g", L"h"}), runTexts(runs));
    EXPECT_EQ(30.0F, runs[1].emSize);
    EXPECT_NE(runs[0].face, runs[2].face);
    EXPECT_EQ(L"fr-fr", runs[3].locale);
    EXPECT_EQ(L"en-us", runs[4].locale);
}

TEST(Runs, AreCutBetweenScriptsWithCommonCharactersGoingAlong) {
    EXPECT_EQ((Texts{L"abc 123 ", L"\u0430\u0431\u0432! ", L"\u03B1\u03B2"}),
              runTexts(drawnRuns(*makeLayout(u"abc 123 \u0430\u0431\u0432! \u03B1\u03B2"))));
    EXPECT_EQ((Texts{L"12 abc"}), runTexts(drawnRuns(*makeLayout(u"12 abc"))));
    EXPECT_EQ((Texts{L"\u6F22", L"\u3042", L"\u30A2"}),
              runTexts(drawnRuns(*makeLayout(u"\u6F22\u3042\u30A2", 0, 0, {.family = L"Noto Sans CJK JP"}))));
}

TEST(Runs, DecorationsAndEffectsCutRunsButNotShapes) {
    // In DejaVu Sans "ffi" is one glyph and "AV" is kerned.
    const auto plain = drawnRuns(*makeLayout(u"AVA"));
    const auto layout = makeLayout(u"AVA");
    Effect effect;
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, {0, 1}));
    EXPECT_EQ(S_OK, layout->SetDrawingEffect(&effect, {1, 1}));
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ((Texts{L"A", L"V", L"A"}), runTexts(runs));
    EXPECT_EQ(plain[0].advances[0], runs[0].advances[0]);
    EXPECT_EQ(plain[0].advances[1], runs[1].advances[0]);
    EXPECT_EQ(&effect, runs[1].effect);
    EXPECT_EQ(nullptr, runs[0].effect);
}

TEST(Runs, ALigatureTakesTheAttributesOfItsFirstPosition) {
    const auto layout = makeLayout(u"oeffi");
    EXPECT_EQ(S_OK, layout->SetUnderline(TRUE, {3, 1}));
    EXPECT_EQ((Texts{L"oeffi"}), runTexts(drawnRuns(*layout)));
    EXPECT_EQ(1U, drawnRuns(*layout)[0].clusterMap[1]);
    EXPECT_EQ((std::vector<unsigned>{0, 1, 2, 2, 2}), drawnRuns(*layout)[0].clusterMap);
}

TEST(Runs, AClusterWithAMarkTakesTheAttributesOfItsBase) {
    const auto layout = makeLayout(u"ae\u0300d");
    Effect effect;
    EXPECT_EQ(S_OK, layout->SetDrawingEffect(&effect, {0, 2}));
    EXPECT_EQ((Texts{L"ae\u0300", L"d"}), runTexts(drawnRuns(*layout)));
    EXPECT_EQ(3U, clustersOf(*layout).size());
}

TEST(Runs, ADifferentSizeSplitsACluster) {
    const auto layout = makeLayout(u"ae\u0300d");
    EXPECT_EQ(S_OK, layout->SetFontSize(30.0F, {2, 1}));
    EXPECT_EQ(4U, clustersOf(*layout).size());
}

TEST(Runs, ParagraphLevelComesFromTheReadingDirection) {
    EXPECT_EQ((std::vector<unsigned>{0}), levelsOf(drawnRuns(*makeLayout(u"abc"))));
    EXPECT_EQ((std::vector<unsigned>{1}), levelsOf(drawnRuns(*makeLayout(u"\u05D0\u05D1"))));
    EXPECT_EQ((std::vector<unsigned>{2}), levelsOf(drawnRuns(*makeLayout(u"abc", 0, 0, {.reading = rightToLeft}))));
    EXPECT_EQ((std::vector<unsigned>{1}),
              levelsOf(drawnRuns(*makeLayout(u"\u05D0\u05D1", 0, 0, {.reading = rightToLeft}))));
}

TEST(Runs, AreDrawnInTheOrderOfTheTextAndPlacedByTheirLevels) {
    const std::u16string text = u"123-52\u0627\u0644\u062871.";
    const auto layout = makeLayout(text);
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ((std::vector<unsigned>{0, 1, 2, 0}), levelsOf(runs));
    EXPECT_EQ(L"71", runs[2].text);
    // "71" lies to the left of the Arabic before it, whose run starts at its right edge.
    const float first = runs[0].advance();
    EXPECT_EQ(0.0F, runs[0].x);
    EXPECT_FLOAT_EQ(first, runs[2].x);
    EXPECT_NEAR(first + runs[2].advance() + runs[1].advance(), runs[1].x, 1e-4F);
    EXPECT_NEAR(runs[1].x, runs[3].x, 1e-4F);
}

TEST(Runs, TrailingWhitespaceIsAtTheParagraphsLevel) {
    const auto runs = drawnRuns(*makeLayout(u"\u05D0\u05D1 "));
    EXPECT_EQ((Texts{L"\u05D0\u05D1", L" "}), runTexts(runs));
    EXPECT_EQ((std::vector<unsigned>{1, 0}), levelsOf(runs));
}

TEST(Runs, WhitespaceWhereALineBreaksIsAtTheParagraphsLevel) {
    const std::u16string text = u"\u05D0\u05D1 \u05D2\u05D3";
    const auto layout = makeLayout(text, metricsOf(*makeLayout(u"\u05D0\u05D1\u05D0")).width);
    const auto runs = drawnRuns(*layout);
    EXPECT_EQ((Texts{L"\u05D0\u05D1", L" ", L"\u05D2\u05D3"}), runTexts(runs));
    EXPECT_EQ((std::vector<unsigned>{1, 0, 1}), levelsOf(runs));
    EXPECT_FLOAT_EQ(runs[0].x, runs[1].x);
}

TEST(Runs, BracketsFollowTheTextAroundThem) {
    const auto runs = drawnRuns(*makeLayout(u"\u05D0(\u05D1)\u05D2"));
    ASSERT_EQ(1U, runs.size());
    // Mirrored: the glyph of an opening bracket is that of a closing one in left-to-right text.
    EXPECT_EQ(drawnRuns(*makeLayout(u")"))[0].glyphs[0], runs[0].glyphs[1]);
}

TEST(Runs, ControlsAreRunsWithoutGlyphs) {
    for (const char16_t control : {u'\u202A', u'\u202C', u'\u2066', u'\u2069', u'\u200E', u'\u200B', u'\uFEFF',
                                   u'\u2060', u'\u00AD', u'\u0001', u'\u0085', u'\u009F'}) {
        const auto runs = drawnRuns(*makeLayout(std::u16string(u"a") + control));
        ASSERT_EQ(2U, runs.size()) << static_cast<int>(control);
        EXPECT_TRUE(runs[1].glyphs.empty()) << static_cast<int>(control);
        EXPECT_EQ((std::vector<unsigned>{0}), runs[1].clusterMap);
    }
}

TEST(Runs, AControlDoesNotInterruptShaping) {
    const float plain = metricsOf(*makeLayout(u"AV")).width;
    EXPECT_FLOAT_EQ(plain, metricsOf(*makeLayout(u"A\u200EV")).width);
}

TEST(Runs, AJoinerActsOnItsNeighboursWithoutAGlyph) {
    // Zero width joiner after BEH gives its initial form.
    const auto joined = drawnRuns(*makeLayout(u"\u0628\u200D"));
    const auto initial = drawnRuns(*makeLayout(u"\u0628\u0628"));
    ASSERT_EQ(1U, joined.size());
    ASSERT_EQ(1U, joined[0].glyphs.size());
    EXPECT_EQ(initial[0].glyphs[0], joined[0].glyphs[0]);
    EXPECT_NE(drawnRuns(*makeLayout(u"\u0628"))[0].glyphs[0], joined[0].glyphs[0]);
    EXPECT_EQ((std::vector<unsigned>{0, 0}), joined[0].clusterMap);
}

TEST(Runs, AVariationSelectorWithoutAnEntryIsInvisible) {
    const auto runs = drawnRuns(*makeLayout(u"A\uFE0Eb"));
    ASSERT_EQ(1U, runs.size());
    EXPECT_EQ(drawnRuns(*makeLayout(u"Ab"))[0].glyphs, runs[0].glyphs);
    EXPECT_EQ((std::vector<unsigned>{0, 0, 1}), runs[0].clusterMap);
}

TEST(Runs, ALoneSurrogateIsAMissingGlyph) {
    for (const char16_t surrogate : {u'\xD83D', u'\xDE00'}) {
        const auto layout = makeLayout(std::u16string(u"a") + surrogate + u"b");
        ASSERT_EQ(3U, clustersOf(*layout).size());
        unsigned missing = 0;
        for (const DrawnCall& run : drawnRuns(*layout)) {
            for (const unsigned glyph : run.glyphs) {
                missing += glyph == 0 ? 1U : 0U;
            }
        }
        EXPECT_EQ(1U, missing);
    }
}

TEST(Runs, ASurrogatePairIsOneCluster) {
    const auto layout = makeLayout(u"\U0001D400");
    const auto clusters = clustersOf(*layout);
    ASSERT_EQ(1U, clusters.size());
    EXPECT_EQ(2U, clusters[0].length);
}

TEST(Runs, WhatNoFontHasIsOneMissingGlyphForEachCharacter) {
    // Unassigned code points.
    const auto layout = makeLayout(u"a\U000E1234\u0378b");
    unsigned missing = 0;
    for (const DrawnCall& run : drawnRuns(*layout)) {
        for (const unsigned glyph : run.glyphs) {
            missing += glyph == 0 ? 1U : 0U;
        }
    }
    EXPECT_EQ(2U, missing);
}

TEST(Runs, FallbackKeepsTheEmSizeAndTakesPartInLineHeights) {
    const auto layout = makeLayout(u"a\u6F22");
    const auto runs = drawnRuns(*layout);
    ASSERT_EQ(2U, runs.size());
    EXPECT_NE(runs[0].face, runs[1].face);
    EXPECT_EQ(20.0F, runs[1].emSize);
    EXPECT_NE(0U, runs[1].glyphs[0]);
    EXPECT_GT(metricsOf(*layout).height, metricsOf(*makeLayout(u"a")).height);
}

TEST(Runs, ArabicLamAlefIsOneGlyphForTwoPositions) {
    const auto runs = drawnRuns(*makeLayout(u"\u0644\u0627"));
    ASSERT_EQ(1U, runs.size());
    EXPECT_EQ(1U, runs[0].glyphs.size());
    EXPECT_EQ((std::vector<unsigned>{0, 0}), runs[0].clusterMap);
}

TEST(Runs, ClusterMapSkipsTheMarksOfACluster) {
    // q with two marks has no precomposed form.
    const auto runs = drawnRuns(*makeLayout(u"aq\u0308\u0323z"));
    ASSERT_EQ(1U, runs.size());
    ASSERT_EQ(5U, runs[0].glyphs.size());
    EXPECT_EQ((std::vector<unsigned>{0, 1, 1, 1, 4}), runs[0].clusterMap);
}

TEST(Runs, EmojiSequencesAreOneCluster) {
    // A family, joined; a flag.
    EXPECT_EQ(1U, clustersOf(*makeLayout(u"\U0001F468\u200D\U0001F469\u200D\U0001F466")).size());
    EXPECT_EQ(1U, clustersOf(*makeLayout(u"\U0001F1E9\U0001F1EA")).size());
    EXPECT_EQ(2U, clustersOf(*makeLayout(u"\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7")).size());
}

TEST(Runs, AreLimitedToWhatAClusterMapCanCount) {
    const std::u16string text(70000, u'x');
    const auto runs = drawnRuns(*makeLayout(text));
    ASSERT_EQ(2U, runs.size());
    EXPECT_EQ(65535U, runs[0].glyphs.size());
    EXPECT_EQ(65534U, runs[0].clusterMap.back());
    EXPECT_EQ(65535U, runs[1].textPosition);
    EXPECT_NEAR(65535.0F * 20.0F * 1212.0F / 2048.0F, runs[1].x, 1000.0F);
}

} // namespace
} // namespace platform_test
