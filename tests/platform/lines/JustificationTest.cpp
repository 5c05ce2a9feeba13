#include "support/LayoutTestSupport.h"

// Sizes are the fonts' design sizes where lengths are sums of advances in font units.

namespace platform_test {
namespace {

using Texts = std::vector<std::u16string>;

constexpr auto rightToLeft = DWRITE_READING_DIRECTION_RIGHT_TO_LEFT;

float widthOf(std::u16string_view text) {
    return designWidth("DejaVu Sans", text);
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

/// Which clusters are wider than in the same layout set ragged, and by how much; all else must be the same.
std::vector<std::pair<unsigned, float>> stretchedClusters(IDWriteTextLayout& layout) {
    const auto runs = drawnRuns(layout);
    const auto clusters = clustersOf(layout);
    EXPECT_EQ(S_OK, layout.SetTextAlignment(DWRITE_TEXT_ALIGNMENT_LEADING));
    const auto raggedRuns = drawnRuns(layout);
    const auto raggedClusters = clustersOf(layout);
    EXPECT_EQ(S_OK, layout.SetTextAlignment(DWRITE_TEXT_ALIGNMENT_JUSTIFIED));
    EXPECT_EQ(runTexts(raggedRuns), runTexts(runs));
    for (std::size_t i = 0; i < runs.size(); ++i) {
        EXPECT_EQ(raggedRuns[i].glyphs, runs[i].glyphs);
        EXPECT_EQ(raggedRuns[i].clusterMap, runs[i].clusterMap);
        EXPECT_EQ(raggedRuns[i].y, runs[i].y);
        for (std::size_t glyph = 0; glyph < runs[i].glyphs.size(); ++glyph) {
            EXPECT_EQ(raggedRuns[i].offsets[glyph].advanceOffset, runs[i].offsets[glyph].advanceOffset);
            EXPECT_EQ(raggedRuns[i].offsets[glyph].ascenderOffset, runs[i].offsets[glyph].ascenderOffset);
        }
    }
    std::vector<std::pair<unsigned, float>> stretched;
    unsigned position = 0;
    for (std::size_t i = 0; i < clusters.size(); ++i) {
        if (clusters[i].width != raggedClusters[i].width) {
            stretched.emplace_back(position, clusters[i].width - raggedClusters[i].width);
        }
        position += clusters[i].length;
    }
    return stretched;
}

TEST(Justification, ArabicIsStretchedAtItsSpacesAloneAndKeepsItsJoins) {
    const std::u16string text = u"سلام عليكم بيت باب كتاب سلام عليكم";
    const FormatOptions options{.family = L"Noto Sans Arabic", .size = 1000.0F, .reading = rightToLeft};
    // hb-shape gives the first three words 1867 + 260 + 2246 + 260 + 1735 units, and 260 more for the next space.
    const auto layout = justified(text, 6600.0F, options);
    ASSERT_EQ((Texts{u"سلام عليكم بيت ", u"باب كتاب سلام ", u"عليكم"}), lineTexts(text, *layout));
    const auto stretched = stretchedClusters(*layout);
    ASSERT_EQ(4U, stretched.size());
    const float missing = 6600.0F - (1867.0F + 260.0F + 2246.0F + 260.0F + 1735.0F);
    EXPECT_EQ(4U, stretched[0].first);
    EXPECT_NEAR(missing / 2, stretched[0].second, 1e-2F);
    EXPECT_EQ(10U, stretched[1].first);
    EXPECT_NEAR(missing / 2, stretched[1].second, 1e-2F);
    EXPECT_EQ(18U, stretched[2].first);
    EXPECT_EQ(23U, stretched[3].first);
    const auto lines = placedRuns(*layout);
    for (const std::size_t line : {0U, 1U}) {
        ASSERT_EQ(1U, lines[line].size());
        EXPECT_NEAR(6600.0F, lines[line][0].right, 1e-2F);
        // The space that the line broke at hangs over the left edge.
        EXPECT_NEAR(-260.0F, lines[line][0].left, 1e-2F);
    }
    EXPECT_NEAR(6600.0F, lines[2][0].right, 1e-2F);
    EXPECT_NEAR(6600.0F - 2246.0F, lines[2][0].left, 1e-2F);
}

TEST(Justification, LinesOfBothDirectionsReachBothEdges) {
    const std::u16string text = u"ab אב cd גד ef הו gh";
    for (const auto reading : {DWRITE_READING_DIRECTION_LEFT_TO_RIGHT, rightToLeft}) {
        const float box = widthOf(u"ab אב cd גד ef") + 700.0F;
        const auto layout = justified(text, box, {.size = 2048.0F, .reading = reading});
        ASSERT_EQ((Texts{u"ab אב cd גד ef ", u"הו gh"}), lineTexts(text, *layout));
        const auto stretched = stretchedClusters(*layout);
        ASSERT_EQ(4U, stretched.size());
        for (const auto& [position, added] : stretched) {
            EXPECT_EQ(u' ', text[position]);
            EXPECT_NEAR(700.0F / 4, added, 1e-2F);
        }
        const auto lines = placedRuns(*layout);
        // The runs touch each other from edge to edge, but for the hanging space.
        const bool hangsLeft = reading == rightToLeft;
        float x = hangsLeft ? -widthOf(u" ") : 0.0F;
        for (const PlacedRun& run : lines.at(0)) {
            EXPECT_NEAR(x, run.left, 1e-1F);
            x = run.right;
        }
        EXPECT_NEAR(hangsLeft ? box : box + widthOf(u" "), x, 1e-1F);
    }
}

TEST(Justification, NoBreakSpacesStretchAndZeroWidthSpacesDoNot) {
    const std::u16string text = u"aa\u00A0bb\u200Bcc dd ee";
    const float box = widthOf(u"aa bbcc dd") + 100.0F;
    const auto layout = justified(text, box, {.size = 2048.0F});
    ASSERT_EQ((Texts{u"aa\u00A0bb\u200Bcc dd ", u"ee"}), lineTexts(text, *layout));
    const auto stretched = stretchedClusters(*layout);
    ASSERT_EQ(2U, stretched.size());
    EXPECT_EQ(2U, stretched[0].first);
    EXPECT_NEAR(50.0F, stretched[0].second, 1e-2F);
    EXPECT_EQ(8U, stretched[1].first);
    EXPECT_NEAR(50.0F, stretched[1].second, 1e-2F);
    EXPECT_EQ(0.0F, clustersOf(*layout)[5].width);
    EXPECT_EQ(box, metricsOf(*layout).width);
}

TEST(Justification, ALineThatEndsAtAZeroWidthSpaceIsStretchedBeforeIt) {
    const std::u16string text = u"aa bb\u200Bcccc";
    const float box = widthOf(u"aa bb") + 300.0F;
    const auto layout = justified(text, box, {.size = 2048.0F});
    ASSERT_EQ((Texts{u"aa bb\u200B", u"cccc"}), lineTexts(text, *layout));
    EXPECT_EQ((std::vector<std::pair<unsigned, float>>{{2, 300.0F}}), stretchedClusters(*layout));
    EXPECT_NEAR(box, placedRuns(*layout)[0].back().right, 1e-2F);
}

TEST(Justification, PunctuationStaysWithTheIdeographItBelongsTo) {
    const std::u16string text = u"漢「字」、漢字。漢";
    const auto layout = justified(text, 8500.0F, {.family = L"Noto Sans CJK JP", .size = 1000.0F});
    ASSERT_EQ((Texts{u"漢「字」、漢字。", u"漢"}), lineTexts(text, *layout));
    std::vector<unsigned> positions;
    for (const auto& [position, added] : stretchedClusters(*layout)) {
        positions.push_back(position);
        EXPECT_NEAR(500.0F / 3, added, 1e-2F);
    }
    EXPECT_EQ((std::vector<unsigned>{0, 4, 5}), positions);
}

TEST(Justification, LatinWordsAmongIdeographsAreNotTornApart) {
    // Noto Sans CJK: ideographs are 1000 wide, A 608, B 657.
    const std::u16string text = u"漢字AB漢字漢字漢";
    const auto layout = justified(text, 6500.0F, {.family = L"Noto Sans CJK JP", .size = 1000.0F});
    ASSERT_EQ((Texts{u"漢字AB漢字漢", u"字漢"}), lineTexts(text, *layout));
    const auto stretched = stretchedClusters(*layout);
    const float missing = 6500.0F - (5 * 1000.0F + 608.0F + 657.0F);
    std::vector<unsigned> positions;
    for (const auto& [position, added] : stretched) {
        positions.push_back(position);
        EXPECT_NEAR(missing / 5, added, 1e-2F);
    }
    // Not between A and B.
    EXPECT_EQ((std::vector<unsigned>{0, 1, 3, 4, 5}), positions);
    EXPECT_NEAR(6500.0F, placedRuns(*layout)[0].back().right, 1e-2F);
}

TEST(Justification, SpacesAmongIdeographsAreStretchedFirst) {
    const std::u16string text = u"漢字 漢字漢字漢";
    const auto layout = justified(text, 4500.0F, {.family = L"Noto Sans CJK JP", .size = 1000.0F});
    ASSERT_EQ((Texts{u"漢字 漢字", u"漢字漢"}), lineTexts(text, *layout));
    const auto stretched = stretchedClusters(*layout);
    ASSERT_EQ(1U, stretched.size());
    EXPECT_EQ(2U, stretched[0].first);
}

TEST(Justification, LinesBeforeLineSeparatorsAreNotStretched) {
    for (const std::u16string_view separator : {u"\u2028", u"\u2029", u"\r\n"}) {
        const std::u16string text = u"aa bb cc dd" + std::u16string(separator) + u"ee ff";
        const float box = widthOf(u"aa bb cc") + 10.0F;
        const auto layout = justified(text, box, {.size = 2048.0F});
        ASSERT_EQ(3U, metricsOf(*layout).lineCount);
        for (const auto& [position, added] : stretchedClusters(*layout)) {
            EXPECT_GT(8U, position);
        }
        EXPECT_EQ(2U, stretchedClusters(*layout).size());
    }
}

TEST(Justification, RightToLeftLinesStretchBehindTheirLastTab) {
    const std::u16string text = u"אב\tגד הו זח";
    const float box = 8192.0F + widthOf(u"גד הו") + 500.0F;
    const auto layout = justified(text, box, {.size = 2048.0F, .reading = rightToLeft});
    ASSERT_EQ((Texts{u"אב\tגד הו ", u"זח"}), lineTexts(text, *layout));
    EXPECT_EQ((std::vector<std::pair<unsigned, float>>{{5, 500.0F}}), stretchedClusters(*layout));
    const auto lines = placedRuns(*layout);
    ASSERT_EQ((Texts{u"גד הו ", u"אב"}), visualTexts(lines[0]));
    EXPECT_NEAR(box, lines[0][1].right, 1e-2F);
    EXPECT_NEAR(box - 8192.0F, lines[0][0].right, 1e-2F);
    EXPECT_NEAR(-widthOf(u" "), lines[0][0].left, 1e-2F);
}

} // namespace
} // namespace platform_test
