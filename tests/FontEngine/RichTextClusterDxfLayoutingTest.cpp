#include "../../FontEngine/src/RichTextClusterDxfLayouting.h"

#include <set>
#include <stdexcept>

#include <geometry/aecmath.h>

#include "MockTextMetrics.h"
#include "TestDocuments.h"

using namespace testdocuments;
using fonts::CRichTextClusterDxfLayouting;
using fonts::SGlyphRunDesc;
using testing::_;
using testing::DoAll;
using testing::ElementsAre;
using testing::Invoke;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Return;
using testing::SizeIs;
using testing::StrictMock;
using testing::WithArg;

namespace {

using Regions = std::vector<boost::intrusive_ptr<MbRegion>>;

constexpr auto Left = eRichTextParagraphAlignment::Left;
constexpr MbRect box(100.0, 0.0, 200.0, 50.0);
constexpr MbRect paragraphRect(0.0, -12.0, 40.0, 0.0);

// A run of the characters with these cluster map entries and one glyph origin per
// unit of x on a baseline at y = -9.
SGlyphRunDesc makeRun(std::wstring text, std::vector<uint32_t> clusterMap, size_t glyphCount) {
    SGlyphRunDesc run;
    run.text = text;
    run.token.text = std::move(text);
    run.token.fontFamily = L"Family";
    run.token.fontCapSize = 7.5f;
    run.token.color = 0xFF112233;
    run.token.fontStyle = {true, false, true};
    run.clusterMap = std::move(clusterMap);
    for (size_t i = 0; i < glyphCount; ++i)
        run.glyphOrigins.push_back({static_cast<double>(i), -9.0});
    return run;
}

class ClusterLayouting : public testing::Test {
protected:
    ClusterLayouting() {
        ON_CALL(textMetrics, getParagraphRects(_, _, _)).WillByDefault(Return(std::vector<MbRect>{paragraphRect}));
        // Three units for each character, ink flush with the layout box.
        ON_CALL(textMetrics, getTextRect).WillByDefault([](const std::wstring& text, auto&&...) {
            return MbRect(0.0, -11.0, 3.0 * static_cast<double>(text.size()), 0.0);
        });
        ON_CALL(textMetrics, getTextGeometryRect).WillByDefault(Return(MbRect(0.0, -9.0, 2.0, -1.0)));
    }

    void answerRuns(std::vector<SGlyphRunDesc> runs, Regions regions = {}) {
        ON_CALL(textMetrics, getGlyphRuns)
            .WillByDefault(DoAll(WithArg<4>([regions](Regions& decorationRegions) {
                                     decorationRegions.insert(decorationRegions.end(), regions.begin(), regions.end());
                                 }),
                                 Return(std::move(runs))));
    }

    void layOut() {
        layouting.setLayoutRect(box);
        layouting.layout();
    }

    std::vector<std::wstring> clusterTexts() const {
        std::vector<std::wstring> texts;
        for (const render::CRichTextParagraph& paragraph : layouting.getParagraphs()) {
            EXPECT_EQ(paragraph.tokens.size(), 1u);
            texts.push_back(paragraph.tokens.at(0).text);
        }
        return texts;
    }

    NiceMock<MockTextMetrics> textMetrics;
    CRichTextClusterDxfLayouting layouting{makeAligned({Left}), &textMetrics};
};

} // namespace

TEST_F(ClusterLayouting, ALigatureOfTwoCharactersIsOneClusterThatHoldsBoth) {
    answerRuns({makeRun(L"ofix", {0, 1, 1, 2}, 3)});
    layOut();
    EXPECT_THAT(clusterTexts(), ElementsAre(L"o", L"fi", L"x"));
    // The glyph origins 0, 1, 2 in the box whose left edge is at 100.
    EXPECT_EQ(layouting.getRects().at(0).xmin, 100.0);
    EXPECT_EQ(layouting.getRects().at(1).xmin, 101.0);
    EXPECT_EQ(layouting.getRects().at(2).xmin, 102.0);
}

TEST_F(ClusterLayouting, ACharacterOfTwoGlyphsIsOneClusterPlacedAtItsFirstGlyph) {
    answerRuns({makeRun(L"abc", {0, 1, 3}, 4)});
    layOut();
    EXPECT_THAT(clusterTexts(), ElementsAre(L"a", L"b", L"c"));
    EXPECT_EQ(layouting.getRects().at(1).xmin, 101.0);
    EXPECT_EQ(layouting.getRects().at(2).xmin, 103.0);
}

TEST_F(ClusterLayouting, TheRectangleHangsOneCapitalSizeAboveTheBaselineAndIsOneUnitWider) {
    answerRuns({makeRun(L"ab", {0, 0}, 1)});
    layOut();
    // Left at the glyph; top one capital size above the baseline at 50 - 9; the
    // text's 11 units of height; its 6 units of width and exactly 1.0 more.
    EXPECT_THAT(layouting.getRects(), ElementsAre(MbRect(100.0, 50.0 - 9.0 + 7.5 - 11.0, 107.0, 50.0 - 9.0 + 7.5)));
}

TEST_F(ClusterLayouting, ATokenGivesItsClustersAllButTheText) {
    answerRuns({makeRun(L"ab", {0, 1}, 2)});
    EXPECT_CALL(textMetrics, getTextRect(std::wstring(L"a"), std::wstring(L"Family"), 7.5f,
                                         render::SRichTextFontStyle{true, false, true}));
    EXPECT_CALL(textMetrics, getTextRect(std::wstring(L"b"), _, _, _));
    EXPECT_CALL(textMetrics,
                getTextGeometryRect(std::wstring(L"a"), std::wstring(L"Family"), 7.5f, std::optional<double>(40.0),
                                    render::SRichTextFontStyle{true, false, true}));
    EXPECT_CALL(textMetrics, getTextGeometryRect(std::wstring(L"b"), _, _, _, _));
    layOut();
    for (const render::CRichTextParagraph& paragraph : layouting.getParagraphs()) {
        const render::SRichTextToken& token = paragraph.tokens.at(0);
        EXPECT_EQ(token.fontFamily, L"Family");
        EXPECT_EQ(token.fontCapSize, 7.5f);
        EXPECT_EQ(token.color, 0xFF112233u);
        EXPECT_EQ(token.fontStyle, (render::SRichTextFontStyle{true, false, true}));
    }
}

TEST_F(ClusterLayouting, EveryClusterParagraphIsLeftTopAndHasAnIdentifierOfItsOwn) {
    answerRuns({makeRun(L"abc", {0, 1, 2}, 3), makeRun(L"de", {0, 1}, 2)});
    layOut();
    std::set<common::UUID> ids{common::UUID()};
    for (const render::CRichTextParagraph& paragraph : layouting.getParagraphs()) {
        EXPECT_EQ(paragraph.alignment, Left);
        EXPECT_EQ(paragraph.verticalAlignment, eRichTextParagraphVerticalAlignment::Top);
        EXPECT_FALSE(paragraph.noWrap);
        EXPECT_TRUE(ids.insert(paragraph.id).second);
    }
    EXPECT_EQ(ids.size(), 6u);
}

TEST_F(ClusterLayouting, InkThatStartsRightOfTheLayoutBoxMovesTheRectangleByTheGap) {
    answerRuns({makeRun(L"a", {0}, 1)});
    ON_CALL(textMetrics, getTextGeometryRect).WillByDefault(Return(MbRect(0.75, -9.0, 2.0, -1.0)));
    layOut();
    EXPECT_EQ(layouting.getRects().at(0).xmin, 100.75);
    EXPECT_EQ(layouting.getRects().at(0).xmax, 104.75);
}

TEST_F(ClusterLayouting, InkThatStartsLeftOfTheLayoutBoxLeavesTheRectangleWhereItIs) {
    answerRuns({makeRun(L"j", {0}, 1)});
    ON_CALL(textMetrics, getTextGeometryRect).WillByDefault(Return(MbRect(-0.75, -9.0, 2.0, -1.0)));
    layOut();
    EXPECT_EQ(layouting.getRects().at(0).xmin, 100.0);
}

// The empty ink box is taken like any other, whose left edge is 1e300.
TEST_F(ClusterLayouting, AClusterWithoutInkMovesByTheEmptyRectanglesLeftEdge) {
    answerRuns({makeRun(L" ", {0}, 1)});
    ON_CALL(textMetrics, getTextGeometryRect).WillByDefault(Return(MbRect()));
    layOut();
    ASSERT_THAT(layouting.getRects(), SizeIs(1));
    EXPECT_EQ(layouting.getRects().at(0).xmin, 1e300);
    EXPECT_EQ(layouting.getRects().at(0).ymax, 50.0 - 9.0 + 7.5);
}

TEST_F(ClusterLayouting, RunsWithoutGlyphOriginsGiveNoClusterButTheirRegionsAreCollected) {
    const auto bar = aecmath::createRegionByRect(MbRect(1.0, -11.0, 5.0, -10.0));
    answerRuns({makeRun(L"\t", {0}, 0)}, {bar});
    layOut();
    EXPECT_THAT(layouting.getParagraphs(), IsEmpty());
    EXPECT_THAT(layouting.getRects(), IsEmpty());
    ASSERT_THAT(layouting.getRegions(), ElementsAre(bar));
    // From the paragraph's frame into the box, whose top-left corner is (100, 50).
    EXPECT_EQ(bar->boundingRect(), MbRect(101.0, 39.0, 105.0, 40.0));
}

TEST_F(ClusterLayouting, ParagraphsAreAskedForOneByOneWithTheirOwnBoxes) {
    render::CRichTextDocument document = render::makeDocument({makeParagraph(L"one"), makeParagraph(L"two")});
    document.tabStopWidth = 12.5f;
    CRichTextClusterDxfLayouting two(document, &textMetrics);
    EXPECT_CALL(textMetrics, getParagraphRects(_, 96.0, 50.0))
        .WillOnce(Return(std::vector<MbRect>{{0.0, -12.0, 40.0, 0.0}, {0.0, -36.0, 40.0, -12.0}}));
    testing::InSequence inOrder;
    EXPECT_CALL(textMetrics, getGlyphRuns(_, 96.0, 12.0, std::optional<double>(12.5), IsEmpty()))
        .WillOnce(DoAll(WithArg<0>([](const render::CRichTextParagraph& paragraph) {
                            EXPECT_EQ(paragraph.tokens.at(0).text, L"one");
                        }),
                        Return(std::vector<SGlyphRunDesc>{makeRun(L"one", {0, 0, 0}, 1)})));
    EXPECT_CALL(textMetrics, getGlyphRuns(_, 96.0, 24.0, std::optional<double>(12.5), IsEmpty()))
        .WillOnce(Return(std::vector<SGlyphRunDesc>{makeRun(L"two", {0, 0, 0}, 1)}));
    two.setLayoutRect(box);
    two.setHorizontalMargin(2.0f);
    two.layout();
    ASSERT_THAT(two.getRects(), SizeIs(2));
    EXPECT_EQ(two.getRects().at(0).xmin, 102.0);
    EXPECT_EQ(two.getRects().at(0).ymax - two.getRects().at(1).ymax, 12.0);
}

TEST_F(ClusterLayouting, AnEmptyBoxAfterALayoutLeavesTheEarlierClustersInPlace) {
    answerRuns({makeRun(L"ab", {0, 1}, 2)}, {aecmath::createRegionByRect(MbRect(0.0, 0.0, 1.0, 1.0))});
    layOut();
    const std::vector<MbRect> rects = layouting.getRects();
    EXPECT_CALL(textMetrics, getParagraphRects(_, _, _)).Times(0);
    layouting.setLayoutRect(MbRect());
    layouting.layout();
    layouting.setLayoutRect(box);
    layouting.setHorizontalMargin(50.5f);
    layouting.layout();
    EXPECT_EQ(layouting.getRects(), rects);
    EXPECT_THAT(layouting.getParagraphs(), SizeIs(2));
    EXPECT_THAT(layouting.getRegions(), SizeIs(1));
}

TEST_F(ClusterLayouting, EachLayoutStartsAnew) {
    answerRuns({makeRun(L"ab", {0, 1}, 2)}, {aecmath::createRegionByRect(MbRect(0.0, 0.0, 1.0, 1.0))});
    layOut();
    answerRuns({makeRun(L"c", {0}, 1)});
    layOut();
    EXPECT_THAT(clusterTexts(), ElementsAre(L"c"));
    EXPECT_THAT(layouting.getRects(), SizeIs(1));
    EXPECT_THAT(layouting.getRegions(), IsEmpty());
}

TEST_F(ClusterLayouting, TheFlagChangesNothing) {
    answerRuns({makeRun(L"ab", {0, 1}, 2)});
    layOut();
    const std::vector<MbRect> rects = layouting.getRects();
    layouting.setAlignByTextBounds(true);
    layouting.layout();
    EXPECT_EQ(layouting.getRects(), rects);
}

TEST_F(ClusterLayouting, AnotherNumberOfRectanglesIsAViolationBeforeAnythingIsCleared) {
    answerRuns({makeRun(L"ab", {0, 1}, 2)}, {aecmath::createRegionByRect(MbRect(0.0, 0.0, 1.0, 1.0))});
    layOut();
    ON_CALL(textMetrics, getParagraphRects(_, _, _)).WillByDefault(Return(std::vector<MbRect>{}));
    EXPECT_EQ(violationPlace<common::ECheckViolation>([&] { layouting.layout(); }),
              "Assertion violation: FontEngine/src/RichTextClusterDxfLayouting");
    EXPECT_THAT(layouting.getParagraphs(), SizeIs(2));
    EXPECT_THAT(layouting.getRects(), SizeIs(2));
    EXPECT_THAT(layouting.getRegions(), SizeIs(1));
}

TEST_F(ClusterLayouting, AClusterThatStartsBeyondTheRunsTextIsOutOfRange) {
    SGlyphRunDesc run = makeRun(L"abc", {0, 1, 2}, 3);
    run.token.text = L"a";
    answerRuns({run});
    // A start at the text's very end is an empty cluster, one beyond it is not.
    EXPECT_THROW(layOut(), std::out_of_range);
    EXPECT_THAT(clusterTexts(), ElementsAre(L"a", L""));
    EXPECT_THAT(layouting.getRects(), SizeIs(2));
}

TEST_F(ClusterLayouting, AClusterIsCutAtTheEndOfTheRunsText) {
    SGlyphRunDesc run = makeRun(L"abcd", {0, 0, 0, 0}, 1);
    run.token.text = L"ab";
    answerRuns({run});
    layOut();
    EXPECT_THAT(clusterTexts(), ElementsAre(L"ab"));
}

TEST_F(ClusterLayouting, ANegativeMapEntryProducesNothing) {
    answerRuns({makeRun(L"abc", {0, 1, 0xFFFFFFFF}, 2)});
    layOut();
    EXPECT_THAT(clusterTexts(), ElementsAre(L"a", L"b"));
}

TEST_F(ClusterLayouting, ClustersAndRectanglesStayPairedWhenTheServiceFails) {
    answerRuns({makeRun(L"abc", {0, 1, 2}, 3)});
    EXPECT_CALL(textMetrics, getTextRect(std::wstring(L"a"), _, _, _));
    EXPECT_CALL(textMetrics, getTextRect(std::wstring(L"b"), _, _, _))
        .WillOnce(testing::Throw(std::runtime_error("failed")));
    EXPECT_THROW(layOut(), std::runtime_error);
    EXPECT_THAT(clusterTexts(), ElementsAre(L"a"));
    EXPECT_THAT(layouting.getRects(), SizeIs(1));
}

TEST_F(ClusterLayouting, TheClustersOfALongRunAreFoundInOrder) {
    std::wstring text;
    std::vector<uint32_t> clusterMap;
    for (uint32_t i = 0; i < 1000; ++i) {
        text += static_cast<wchar_t>(L'a' + i % 26);
        clusterMap.push_back(i / 3);
    }
    answerRuns({makeRun(text, clusterMap, 334)});
    layOut();
    std::wstring joined;
    for (const std::wstring& cluster : clusterTexts())
        joined += cluster;
    EXPECT_EQ(joined, text);
    EXPECT_THAT(layouting.getRects(), SizeIs(334));
}

TEST(RichTextClusterDxfLayouting, ADocumentWithoutParagraphsYieldsNothing) {
    StrictMock<MockTextMetrics> textMetrics;
    EXPECT_CALL(textMetrics, getParagraphRects(_, _, _)).WillOnce(Return(std::vector<MbRect>{}));
    CRichTextClusterDxfLayouting layouting(render::CRichTextDocument{}, &textMetrics);
    layouting.setLayoutRect(box);
    layouting.layout();
    EXPECT_THAT(layouting.getRects(), IsEmpty());
    EXPECT_THAT(layouting.getParagraphs(), IsEmpty());
    EXPECT_THAT(layouting.getRegions(), IsEmpty());
}

TEST_F(ClusterLayouting, AReturnedRegionOutlivesTheNextLayout) {
    answerRuns({}, {aecmath::createRegionByRect(MbRect(0.0, 0.0, 1.0, 1.0))});
    layOut();
    const Regions regions = layouting.getRegions();
    answerRuns({});
    layOut();
    EXPECT_THAT(layouting.getRegions(), IsEmpty());
    ASSERT_THAT(regions, SizeIs(1));
    EXPECT_EQ(regions[0]->boundingRect(), MbRect(100.0, 50.0, 101.0, 51.0));
}
