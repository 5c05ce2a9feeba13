// Holds what the library measures against what other tools said of the same texts and fonts.

#include <cmath>
#include <set>

#include <gmock/gmock.h>

#include "TextFacts.h"

namespace {

// Of a design unit: what floats as large as a line's width carry.
constexpr double precision = 0.01;

} // namespace

TEST_P(TextFacts, TheBaselineStandsAscentAndLineGapBelowTheTop) {
    EXPECT_NEAR(baseline(designSize), -(fact.ascent + fact.lineGap), precision);
}

TEST_P(TextFacts, TheBaselineOfSmallTextIsSnappedToHundredths) {
    const double small = baseline(10.0f);
    EXPECT_NEAR(small, -(fact.ascent + fact.lineGap) * 10.0 / fact.capHeight, 0.0051);
    EXPECT_NEAR(small * 100.0, std::round(small * 100.0), 0.01);
}

TEST_P(TextFacts, TheBoxIsTheAdvanceWideAndOneLineHigh) {
    const MbRect rect = service->getTextRect(fact.text, fact.family, designSize, fact.style);
    EXPECT_EQ(rect.xmin, 0.0);
    EXPECT_EQ(rect.ymax, 0.0);
    EXPECT_NEAR(rect.xmax, fact.advance, precision);
    EXPECT_NEAR(rect.ymin, -(fact.ascent + fact.descent + fact.lineGap), precision);
}

TEST_P(TextFacts, TheInkIsTheOutlinesAroundTheBaseline) {
    const MbRect ink = service->getTextGeometryRect(fact.text, fact.family, designSize, {}, fact.style);
    const double origin = baseline(designSize);
    expectNear(ink, MbRect(fact.ink.xmin, origin + fact.ink.ymin, fact.ink.xmax, origin + fact.ink.ymax), precision);
}

TEST_P(TextFacts, MetricsAreTheFontsScaledToTheCapitalSize) {
    for (const double capSize : {10.0, fact.capHeight}) {
        const double scale = capSize / fact.capHeight;
        const fonts::SFontMetrics metrics =
            service->getFontMetrics(fact.family, capSize, fact.style.italic, fact.style.bold);
        EXPECT_NEAR(metrics.ascent, fact.ascent * scale, 1e-9);
        EXPECT_NEAR(metrics.descent, fact.descent * scale, 1e-9);
        EXPECT_NEAR(metrics.lineGap, fact.lineGap * scale, 1e-9);
        EXPECT_NEAR(metrics.capitalTopToAscent, fact.ascent * scale - capSize, 1e-9);
    }
}

TEST_P(TextFacts, ClustersStartWhereTheShaperSaysAndTheirMapNeverDecreases) {
    std::set<uint32_t> starts;
    std::wstring text;
    for (const fonts::SGlyphRunDesc& run : drawnRuns()) {
        ASSERT_EQ(run.textPosition, text.size());
        ASSERT_EQ(run.clusterMap.size(), run.text.size());
        text += run.text;
        for (size_t i = 0; i < run.clusterMap.size(); ++i) {
            if (i == 0 || run.clusterMap[i] != run.clusterMap[i - 1])
                starts.insert(run.textPosition + static_cast<uint32_t>(i));
            EXPECT_TRUE(i == 0 || run.clusterMap[i] >= run.clusterMap[i - 1]);
            EXPECT_LT(run.clusterMap[i], run.glyphOrigins.size());
        }
    }
    EXPECT_EQ(text, fact.text);
    EXPECT_THAT(starts, testing::ElementsAreArray(fact.clusterStarts));
}

TEST_P(TextFacts, GlyphsStandWhereTheShaperPutThem) {
    size_t glyph = 0;
    for (const fonts::SGlyphRunDesc& run : drawnRuns()) {
        EXPECT_EQ(run.baselineOrigin.y, baseline(designSize));
        for (const MbCartPoint& origin : run.glyphOrigins) {
            ASSERT_LT(glyph, fact.glyphOrigins.size());
            if (!fact.isRightToLeft) {
                EXPECT_NEAR(origin.x, fact.glyphOrigins[glyph].x, precision);
                EXPECT_NEAR(origin.y, baseline(designSize) + fact.glyphOrigins[glyph].y, precision);
            }
            ++glyph;
        }
    }
    EXPECT_EQ(glyph, fact.glyphOrigins.size());
}

// Right-to-left runs start at their right end and sum their advances up to the
// right like any other; the outlines stand to the left.
TEST_P(TextFacts, ARunsBaselineStartsAtItsLeftEndOrAtItsRightEndWhenItGoesLeft) {
    const std::vector<fonts::SGlyphRunDesc> runs = drawnRuns();
    ASSERT_FALSE(runs.empty());
    EXPECT_NEAR(runs.front().baselineOrigin.x, fact.isRightToLeft ? fact.advance : 0.0, precision);
    for (const fonts::SGlyphRunDesc& run : runs) {
        if (!run.bounds.isEmpty()) {
            EXPECT_GE(run.bounds.xmin, fact.ink.xmin - precision);
            EXPECT_LE(run.bounds.xmax, fact.ink.xmax + precision);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Recorded, TextFacts, testing::ValuesIn(readTextFacts("text_facts.tsv")), TextFacts::nameOf);

TEST(TextFactsFile, HoldsTheCasesThatMatter) {
    std::set<std::string> names;
    for (const TextFact& fact : readTextFacts("text_facts.tsv"))
        names.insert(fact.name);
    EXPECT_THAT(names, testing::IsSupersetOf(
                           {"Kerning", "Ligatures", "Marks", "SurrogatePairs", "Hebrew", "Thai", "Devanagari"}));
}
