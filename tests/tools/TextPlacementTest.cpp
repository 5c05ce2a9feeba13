#include <TextLayout.h>

#include <sstream>

#include <gtest/gtest.h>

#include "Drawings.h"

using namespace tooltest;

namespace {

/// Lays out the only text of a drawing.
class TextPlacementTest : public testing::Test {
protected:
    tool::LaidOutText layOut(const std::string& entity, const tool::TextLayoutOptions& options = {}) {
        std::istringstream input(drawing(entity));
        m_drawing = dxf::readDrawing(input);
        dxf::PlacedText placed;
        m_text = m_drawing.texts.at(0);
        placed.text = &m_text;
        placed.frame = dxf::frameOf(*placed.text);
        m_document = tool::makeTextDocument(m_drawing, placed, m_session.fontMap());
        return tool::layOutText(m_session, placed, m_document, options);
    }

    /// Where a point of the text's frame stands in the drawing.
    static dxf::Point placeOf(const tool::LaidOutText& text, double x, double y) {
        return text.toDrawing.apply({x, y, 0.0});
    }

    static double baseline(const tool::LaidOutText& text, std::size_t paragraph, std::size_t line = 0) {
        const tool::LaidOutParagraph& laidOut = text.paragraphs.at(paragraph);
        return placeOf(text, 0.0, laidOut.baselines().at(line)).y;
    }

    static double left(const tool::LaidOutText& text, std::size_t paragraph) {
        return placeOf(text, text.paragraphs.at(paragraph).ink.xmin, 0.0).x;
    }

    static constexpr double tolerance = 2.5e-3; // a thousandth of the cap height

    tool::Session m_session;
    dxf::Drawing m_drawing;
    dxf::TextEntity m_text;
    tool::TextDocument m_document;
};

TEST_F(TextPlacementTest, CapitalsOfTheFirstLineReachUpToATopAttachment) {
    const tool::LaidOutText text = layOut(mtextEntity("HE"));
    EXPECT_NEAR(baseline(text, 0), 20.0 - 2.5, tolerance);
    EXPECT_NEAR(placeOf(text, 0.0, text.ink.ymax).y, 20.0, tolerance);
}

TEST_F(TextPlacementTest, TheTallestCapitalsOfTheFirstLineReachTheTop) {
    EXPECT_NEAR(baseline(layOut(mtextEntity(R"(H{\H5;H})")), 0), 20.0 - 5.0, tolerance);
    EXPECT_NEAR(baseline(layOut(mtextEntity(R"({\H1;H})")), 0), 20.0 - 1.0, tolerance);
}

TEST_F(TextPlacementTest, TheLastBaselineStandsAtABottomAttachment) {
    const tool::LaidOutText text = layOut(mtextEntity(R"(one\Ptwo)", "71 7"));
    EXPECT_NEAR(baseline(text, 1), 20.0, tolerance);
    EXPECT_GT(baseline(text, 0), 20.0);
}

TEST_F(TextPlacementTest, AMiddleAttachmentIsHalfwayBetweenTopAndLastBaseline) {
    EXPECT_NEAR(baseline(layOut(mtextEntity("H", "71 5")), 0), 20.0 - 1.25, tolerance);
}

TEST_F(TextPlacementTest, InkOfLeftAttachedTextStartsAtTheInsertionPoint) {
    // H of DejaVu Sans begins 201 of 2048 units right of its origin.
    EXPECT_NEAR(left(layOut(mtextEntity("H")), 0), 10.0, tolerance);
}

TEST_F(TextPlacementTest, InkThatBeginsLeftOfTheBoxStaysThere) {
    // j of DejaVu Sans hangs out to the left.
    EXPECT_LT(left(layOut(mtextEntity("j")), 0), 10.0 - tolerance);
}

TEST_F(TextPlacementTest, BlanksAtTheBeginningAreNotTrimmed) {
    EXPECT_GT(left(layOut(mtextEntity("  H")), 0), 10.0 + 1.0);
}

TEST_F(TextPlacementTest, RightAndCentredAttachmentsMeasureTheBox) {
    const tool::LaidOutText centred = layOut(mtextEntity("HH", "71 2"));
    EXPECT_NEAR((placeOf(centred, centred.ink.xmin, 0).x + placeOf(centred, centred.ink.xmax, 0).x) / 2.0, 10.0,
                tolerance);
    const tool::LaidOutText right = layOut(mtextEntity("HH", "71 3"));
    EXPECT_LT(placeOf(right, right.ink.xmax, 0).x, 10.0);
}

TEST_F(TextPlacementTest, AWidthOfZeroDoesNotWrap) {
    EXPECT_EQ(layOut(mtextEntity("one two three", "41 0.0")).paragraphs[0].baselines().size(), 1U);
    EXPECT_EQ(layOut(mtextEntity("one two three", "41 6.0")).paragraphs[0].baselines().size(), 3U);
}

TEST_F(TextPlacementTest, SmallTextStandsAsExactlyAsLargeText) {
    // The platform's grid of 0.01 units would be a tenth of this cap height.
    const std::string entity = "0 MTEXT\n5 20\n8 0\n10 0.0\n20 0.0\n30 0.0\n40 0.1\n1 H\n7 STANDARD";
    EXPECT_NEAR(baseline(layOut(entity), 0), -0.1, 1e-5);
}

TEST_F(TextPlacementTest, ExactSpacingSetsFiveThirdsOfTheHeightTimesTheFactor) {
    const tool::LaidOutText text = layOut(mtextEntity(R"(one\Ptwo\Pthree)", "73 2\n44 1.5"));
    EXPECT_NEAR(baseline(text, 0) - baseline(text, 1), 2.5 * 5.0 / 3.0 * 1.5, tolerance);
    EXPECT_NEAR(baseline(text, 1) - baseline(text, 2), 2.5 * 5.0 / 3.0 * 1.5, tolerance);
}

TEST_F(TextPlacementTest, ASpacingFactorStretchesTheNaturalDistance) {
    const tool::LaidOutText single = layOut(mtextEntity(R"(one\Ptwo)"));
    const double natural = baseline(single, 0) - baseline(single, 1);
    // DejaVu Sans: ascent and descent are 1901 and 483 units, capitals 1493.
    EXPECT_NEAR(natural, 2.5 * (1901.0 + 483.0) / 1493.0, tolerance);
    const tool::LaidOutText twice = layOut(mtextEntity(R"(one\Ptwo)", "44 2.0"));
    EXPECT_NEAR(baseline(twice, 0) - baseline(twice, 1), 2.0 * natural, tolerance);
}

TEST_F(TextPlacementTest, ParagraphSpacingSetsTheDistanceToTheParagraphAbove) {
    const double natural = 2.5 * (1901.0 + 483.0) / 1493.0;
    const tool::LaidOutText exact = layOut(mtextEntity(R"(one\P\pse3;two)"));
    EXPECT_NEAR(baseline(exact, 0) - baseline(exact, 1), 3.0 * 2.5, tolerance);
    EXPECT_TRUE(exact.spacingExpressed);
    const tool::LaidOutText multiple = layOut(mtextEntity(R"(one\P\psm2;two)"));
    EXPECT_NEAR(baseline(multiple, 0) - baseline(multiple, 1), 2.0 * natural, tolerance);
    const tool::LaidOutText atLeast = layOut(mtextEntity(R"(one\P\psa0.5;two)"));
    EXPECT_NEAR(baseline(atLeast, 0) - baseline(atLeast, 1), natural, tolerance);
    const tool::LaidOutText around = layOut(mtextEntity(R"(\pa1;one\P\pa0,b2;two)"));
    EXPECT_NEAR(baseline(around, 0) - baseline(around, 1), natural + 3.0 * 2.5, tolerance);
}

TEST_F(TextPlacementTest, LineSpacingInsideAParagraphIsReportedAsNotExpressed) {
    EXPECT_FALSE(layOut(mtextEntity(R"(\psm2;one two)", "41 6.0")).spacingExpressed);
}

TEST_F(TextPlacementTest, IndentsMoveAParagraphsEdges) {
    const tool::LaidOutText text = layOut(mtextEntity(R"(H\P\pl2;H\P\pi1;H)", "41 60.0"));
    EXPECT_NEAR(left(text, 1) - left(text, 0), 2.0 * 2.5, tolerance);
    EXPECT_NEAR(left(text, 2) - left(text, 0), 3.0 * 2.5, tolerance);
    EXPECT_TRUE(text.indentsExpressed);
    const tool::LaidOutText right = layOut(mtextEntity(R"(\pqr;H\P\pr2,qr;H)", "41 60.0"));
    EXPECT_NEAR(left(right, 0) - left(right, 1), 2.0 * 2.5, tolerance);
}

TEST_F(TextPlacementTest, AHangingIndentOfSeveralLinesIsReportedAsNotExpressed) {
    const tool::LaidOutText text = layOut(mtextEntity(R"(\pi-1,l2;one two three)", "41 12.0"));
    EXPECT_GT(text.paragraphs[0].baselines().size(), 1U);
    EXPECT_FALSE(text.indentsExpressed);
}

TEST_F(TextPlacementTest, IndentsWiderThanTheTextLeaveRoomForACapital) {
    EXPECT_FALSE(layOut(mtextEntity(R"(\pl20;H)", "41 10.0")).ink.isEmpty());
}

TEST_F(TextPlacementTest, EveryModeDrawsTheTextInOnePlace) {
    const std::string entity = mtextEntity(R"({\LThe} first\P\P\pqc;Second)", "41 40.0\n71 5");
    const tool::LaidOutText document = layOut(entity);
    for (const tool::LayoutMode mode : {tool::LayoutMode::MText, tool::LayoutMode::Clusters}) {
        const tool::LaidOutText other = layOut(entity, {.mode = mode});
        ASSERT_EQ(other.paragraphs.size(), 3U);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_NEAR(other.paragraphs[i].origin.y, document.paragraphs[i].origin.y, tolerance);
            EXPECT_NEAR(other.paragraphs[i].origin.x, document.paragraphs[i].origin.x, tolerance);
        }
        EXPECT_NEAR(other.anchor.x, document.anchor.x, tolerance);
        EXPECT_NEAR(other.anchor.y, document.anchor.y, tolerance);
    }
}

TEST_F(TextPlacementTest, InMTextModeARectanglesCornerIsThatOfTheInk) {
    const tool::LaidOutText text = layOut(mtextEntity("Hop", "41 40.0"), {.mode = tool::LayoutMode::MText});
    EXPECT_NEAR(text.paragraphs[0].box.xmin, text.paragraphs[0].ink.xmin, tolerance);
    EXPECT_NEAR(text.paragraphs[0].box.ymax, text.paragraphs[0].ink.ymax, tolerance);
    EXPECT_NEAR(text.paragraphs[0].box.xmax - text.paragraphs[0].box.xmin, 40.0, tolerance);
}

TEST_F(TextPlacementTest, InMTextModeAParagraphWithoutInkHasNoRectangle) {
    const tool::LaidOutText text = layOut(mtextEntity(R"(one\P\Pthree)"), {.mode = tool::LayoutMode::MText});
    EXPECT_TRUE(text.paragraphs[1].box.isEmpty());
    EXPECT_LT(text.box.xmax, 1e6);
}

TEST_F(TextPlacementTest, AlignedInkOfTwoParagraphsMovesTogetherAndBlankLinesStay) {
    const tool::LaidOutText text = layOut(mtextEntity(R"(H\P\PO)", "41 40.0"), {.alignByInk = true});
    EXPECT_LT(text.box.ymax, 1e6);
    EXPECT_NEAR(text.paragraphs[0].ink.ymax, 0.0, tolerance);
}

TEST_F(TextPlacementTest, ClustersTakeAWholeLigatureAndEachCharacterElse) {
    const tool::LaidOutText text =
        layOut(mtextEntity(R"({\fDejaVu Serif|b0|i0;office})"), {.mode = tool::LayoutMode::Clusters});
    std::vector<std::wstring> clusters;
    for (const tool::LaidOutCluster& cluster : text.paragraphs[0].clusters) {
        clusters.push_back(cluster.token.text);
    }
    EXPECT_EQ(clusters, (std::vector<std::wstring>{L"o", L"ff", L"i", L"c", L"e"}));
}

TEST_F(TextPlacementTest, AClustersRectangleStandsOneCapHeightAboveItsBaseline) {
    const tool::LaidOutText text = layOut(mtextEntity("HO"), {.mode = tool::LayoutMode::Clusters});
    for (const tool::LaidOutCluster& cluster : text.paragraphs[0].clusters) {
        EXPECT_FALSE(cluster.rect.isEmpty());
        EXPECT_NEAR(placeOf(text, 0.0, cluster.rect.ymax).y, 20.0, tolerance);
    }
    EXPECT_NEAR(text.paragraphs[0].clusters[0].rect.xmin, text.ink.xmin, tolerance);
}

TEST_F(TextPlacementTest, UnderlinesAreRegionsInClusterMode) {
    const tool::LaidOutText text = layOut(mtextEntity(R"({\LHO} H)"), {.mode = tool::LayoutMode::Clusters});
    ASSERT_EQ(text.paragraphs[0].underlines.size(), 1U);
    EXPECT_LT(placeOf(text, 0.0, text.paragraphs[0].underlines[0].ymax).y, 17.5);
    EXPECT_EQ(text.paragraphs[0].layout.bars().size(), 1U);
}

TEST_F(TextPlacementTest, ABarHasTheColourOfTheRunAboveIt) {
    const tool::LaidOutText text = layOut(mtextEntity(R"(H {\C1;\LO})"));
    const tool::LaidOutParagraph& paragraph = text.paragraphs[0];
    ASSERT_EQ(paragraph.layout.bars().size(), 1U);
    EXPECT_EQ(paragraph.colors.at(paragraph.layout.bars()[0].token), 0xFFFF0000U);
}

TEST_F(TextPlacementTest, EachGlyphHasTheColourOfItsCharacter) {
    const tool::LaidOutText text = layOut(mtextEntity(R"(A{\C1;B}{\C5;C})"));
    std::vector<std::uint32_t> colors;
    for (const fonts::SRun& run : text.paragraphs[0].layout.runs()) {
        ASSERT_EQ(run.glyphCount, 1U);
        colors.push_back(text.paragraphs[0].colors.at(run.token));
    }
    EXPECT_EQ(colors, (std::vector<std::uint32_t>{0xFF000000U, 0xFFFF0000U, 0xFF0000FFU}));
}

TEST_F(TextPlacementTest, WhatIsNotDrawnIsMeasuredAlikeAndNotKept) {
    const std::string entity = mtextEntity(R"({\Lunder} a{\H5;B}\P\Pend)", "41 60.0\n71 5");
    for (const tool::LayoutMode mode :
         {tool::LayoutMode::Document, tool::LayoutMode::MText, tool::LayoutMode::Clusters}) {
        const tool::LaidOutText whole = layOut(entity, {.mode = mode});
        const tool::LaidOutText lines = layOut(entity, {.mode = mode, .detail = fonts::EParagraphDetail::Lines});
        EXPECT_EQ(lines.box, whole.box);
        EXPECT_EQ(lines.ink, whole.ink);
        EXPECT_EQ(lines.toDrawing, whole.toDrawing);
        ASSERT_EQ(lines.paragraphs.size(), 3U);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(lines.paragraphs[i].baselines(), whole.paragraphs[i].baselines());
            EXPECT_EQ(lines.paragraphs[i].mixesHeights, i == 0);
            EXPECT_EQ(!lines.paragraphs[i].layout.bars().empty(), i == 0);
            EXPECT_TRUE(lines.paragraphs[i].clusters.empty());
        }
        EXPECT_TRUE(whole.paragraphs[2].layout.glyphs()[0].hasInk);
        EXPECT_EQ(whole.paragraphs[2].clusters.empty(), mode != tool::LayoutMode::Clusters);
        EXPECT_TRUE(lines.paragraphs[2].layout.runs().empty());
        EXPECT_TRUE(lines.paragraphs[2].layout.glyphs().empty());
    }
}

TEST_F(TextPlacementTest, GlyphsOfRightToLeftRunsArePlacedWhereTheyAreDrawn) {
    // Hebrew alef and bet: the first letter stands right of the second.
    const tool::LaidOutText text = layOut(mtextEntity("\xD7\x90\xD7\x91"), {.mode = tool::LayoutMode::Clusters});
    const tool::LaidOutParagraph& paragraph = text.paragraphs[0];
    const auto glyphs = paragraph.layout.glyphs();
    ASSERT_EQ(glyphs.size(), 2U);
    EXPECT_TRUE(paragraph.layout.runs()[0].isRightToLeft());
    EXPECT_GT(glyphs[0].origin.x, glyphs[1].origin.x);
    EXPECT_NEAR(paragraph.toText(glyphs[1].origin).x, 0.0, 1e-6);
    // And so do the clusters' rectangles, which begin where the ink does.
    EXPECT_GT(paragraph.clusters.at(0).rect.xmin, paragraph.clusters.at(1).rect.xmin);
    EXPECT_NEAR(paragraph.clusters[1].rect.xmin, text.ink.xmin, tolerance);
}

} // namespace
