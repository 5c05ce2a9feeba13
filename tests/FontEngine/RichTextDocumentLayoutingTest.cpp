#include "../../FontEngine/src/RichTextDocumentLayouting.h"

#include <stdexcept>

#include "MockTextMetrics.h"
#include "TestDocuments.h"

using namespace testdocuments;
using fonts::CRichTextDocumentLayouting;
using testing::_;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Return;
using testing::StrictMock;

namespace {

constexpr auto Left = eRichTextParagraphAlignment::Left;
constexpr auto Right = eRichTextParagraphAlignment::Right;
constexpr auto Center = eRichTextParagraphAlignment::Center;
constexpr auto Justify = eRichTextParagraphAlignment::Justify;
constexpr auto Default = eRichTextParagraphAlignment::Default;

constexpr MbRect box(0.0, 0.0, 100.0, 50.0);

// Boxes of 10 units' height under each other, y up.
std::vector<MbRect> stackedRects(size_t count) {
    std::vector<MbRect> rects;
    for (size_t i = 0; i < count; ++i) {
        const double top = -10.0 * static_cast<double>(i);
        rects.emplace_back(0.0, top - 10.0, 20.0, top);
    }
    return rects;
}

// Ink from `left` to `right` in paragraph `i` of the stack, 2 units below its top.
MbRect inkRect(size_t i, double left, double right) {
    const double top = -10.0 * static_cast<double>(i);
    return {left, top - 8.0, right, top - 2.0};
}

class DocumentLayouting : public testing::Test {
protected:
    void answer(std::vector<MbRect> rects, std::vector<MbRect> inkRects) {
        ON_CALL(textMetrics, getParagraphRects(_, _, _)).WillByDefault(Return(std::move(rects)));
        ON_CALL(textMetrics, getParagraphGeometryRects(_, _, _)).WillByDefault(Return(std::move(inkRects)));
    }

    std::vector<MbRect> layOutByInk(const render::CRichTextDocument& document) {
        CRichTextDocumentLayouting layouting(document, &textMetrics);
        layouting.setLayoutRect(box);
        layouting.setAlignByTextBounds(true);
        layouting.layout();
        return layouting.getRects();
    }

    NiceMock<MockTextMetrics> textMetrics;
};

} // namespace

TEST_F(DocumentLayouting, ADocumentWithoutParagraphsYieldsNoRectanglesInEveryMode) {
    answer({}, {});
    for (const bool alignByTextBounds : {false, true}) {
        for (const MbRect& layoutRect : {MbRect(), box}) {
            CRichTextDocumentLayouting layouting(render::CRichTextDocument{}, &textMetrics);
            layouting.setLayoutRect(layoutRect);
            layouting.setAlignByTextBounds(alignByTextBounds);
            layouting.layout();
            EXPECT_THAT(layouting.getRects(), IsEmpty());
            EXPECT_THAT(layouting.getParagraphs(), IsEmpty());
        }
    }
}

TEST(RichTextDocumentLayouting, AnUnsetBoxGivesTheNaturalLayoutInTheServicesFrame) {
    StrictMock<MockTextMetrics> textMetrics;
    EXPECT_CALL(textMetrics, getParagraphRects(_, 0.0, 0.0)).WillOnce(Return(stackedRects(2)));
    CRichTextDocumentLayouting layouting(makeAligned({Left, Left}), &textMetrics);
    layouting.setAlignByTextBounds(true);
    layouting.layout();
    EXPECT_EQ(layouting.getRects(), stackedRects(2));
}

TEST(RichTextDocumentLayouting, ABoxNarrowerThanTwiceTheMarginGivesTheNaturalLayoutAtTheOrigin) {
    StrictMock<MockTextMetrics> textMetrics;
    EXPECT_CALL(textMetrics, getParagraphRects(_, 0.0, 0.0)).WillOnce(Return(stackedRects(1)));
    CRichTextDocumentLayouting layouting(makeAligned({Left}), &textMetrics);
    layouting.setLayoutRect(box);
    layouting.setHorizontalMargin(50.5f);
    layouting.layout();
    EXPECT_EQ(layouting.getRects(), stackedRects(1));
}

TEST(RichTextDocumentLayouting, ABoxWhoseBottomIsAboveItsTopGivesTheNaturalLayoutToo) {
    StrictMock<MockTextMetrics> textMetrics;
    EXPECT_CALL(textMetrics, getParagraphRects(_, 0.0, 0.0)).WillOnce(Return(stackedRects(1)));
    CRichTextDocumentLayouting layouting(makeAligned({Left}), &textMetrics);
    layouting.setLayoutRect(MbRect(0.0, 50.0, 100.0, 0.0));
    layouting.layout();
    EXPECT_EQ(layouting.getRects(), stackedRects(1));
}

TEST(RichTextDocumentLayouting, ABoxWithoutHeightIsNotEmpty) {
    StrictMock<MockTextMetrics> textMetrics;
    EXPECT_CALL(textMetrics, getParagraphRects(_, 100.0, 0.0)).WillOnce(Return(stackedRects(1)));
    CRichTextDocumentLayouting layouting(makeAligned({Left}), &textMetrics);
    layouting.setLayoutRect(MbRect(0.0, 50.0, 100.0, 50.0));
    layouting.layout();
    EXPECT_THAT(layouting.getRects(), ElementsAre(MbRect(0.0, 40.0, 100.0, 50.0)));
}

TEST(RichTextDocumentLayouting, ABoxAsWideAsTwiceTheMarginIsNotEmpty) {
    StrictMock<MockTextMetrics> textMetrics;
    EXPECT_CALL(textMetrics, getParagraphRects(_, 0.0, 50.0)).WillOnce(Return(stackedRects(1)));
    CRichTextDocumentLayouting layouting(makeAligned({Left}), &textMetrics);
    layouting.setLayoutRect(box);
    layouting.setHorizontalMargin(50.0f);
    layouting.layout();
    EXPECT_THAT(layouting.getRects(), ElementsAre(MbRect(50.0, 40.0, 50.0, 50.0)));
}

TEST_F(DocumentLayouting, WithoutTheFlagEveryRectangleSpansTheBoxWithinItsMargins) {
    answer(stackedRects(5), {});
    EXPECT_CALL(textMetrics, getParagraphGeometryRects(_, _, _)).Times(0);
    CRichTextDocumentLayouting layouting(makeAligned({Left, Right, Center, Justify, Default}), &textMetrics);
    layouting.setLayoutRect(box);
    layouting.setHorizontalMargin(4.0f);
    layouting.setAlignByTextBounds(false);
    layouting.layout();
    ASSERT_EQ(layouting.getRects().size(), 5u);
    for (const MbRect& rect : layouting.getRects()) {
        EXPECT_EQ(rect.xmin, 4.0);
        EXPECT_EQ(rect.xmax, 96.0);
    }
}

TEST_F(DocumentLayouting, TheMarginIsTakenOffAtEachLayoutAnew) {
    answer(stackedRects(1), {});
    CRichTextDocumentLayouting layouting(makeAligned({Left}), &textMetrics);
    layouting.setLayoutRect(box);
    layouting.setHorizontalMargin(4.0f);
    layouting.layout();
    layouting.layout();
    EXPECT_THAT(layouting.getRects(), ElementsAre(MbRect(4.0, 40.0, 96.0, 50.0)));
}

TEST_F(DocumentLayouting, LeftParagraphsOfDifferentInkOffsetsAreMovedByTheSameDx) {
    // Ink sticks out by 1 and by 3 units; the second decides for both.
    answer(stackedRects(2), {inkRect(0, -1.0, 15.0), inkRect(1, -3.0, 15.0)});
    EXPECT_THAT(layOutByInk(makeAligned({Left, Left})),
                ElementsAre(MbRect(3.0, 42.0, 103.0, 52.0), MbRect(3.0, 32.0, 103.0, 42.0)));
}

TEST_F(DocumentLayouting, ACenteredParagraphKeepsItsOwnDx) {
    // The ink's middle is 8, the box's is 50.
    answer(stackedRects(2), {inkRect(0, -3.0, 15.0), inkRect(1, 1.0, 15.0)});
    EXPECT_THAT(layOutByInk(makeAligned({Left, Center})),
                ElementsAre(MbRect(3.0, 42.0, 103.0, 52.0), MbRect(42.0, 32.0, 142.0, 42.0)));
}

TEST_F(DocumentLayouting, ADefaultParagraphKeepsItsOwnDxAndMovesNoOther) {
    answer(stackedRects(2), {inkRect(0, -3.0, 15.0), inkRect(1, -1.0, 15.0)});
    EXPECT_THAT(layOutByInk(makeAligned({Default, Left})),
                ElementsAre(MbRect(3.0, 42.0, 103.0, 52.0), MbRect(1.0, 32.0, 101.0, 42.0)));
}

TEST_F(DocumentLayouting, NegativeOffsetsOfLeftParagraphsLeaveThemWhereTheyAre) {
    answer(stackedRects(1), {inkRect(0, 2.0, 15.0)});
    EXPECT_THAT(layOutByInk(makeAligned({Left})), ElementsAre(MbRect(0.0, 42.0, 100.0, 52.0)));
}

TEST_F(DocumentLayouting, PositiveOffsetsOfRightParagraphsLeaveThemWhereTheyAre) {
    answer(stackedRects(2), {inkRect(0, 50.0, 97.0), inkRect(1, 50.0, 99.0)});
    EXPECT_THAT(layOutByInk(makeAligned({Right, Right})),
                ElementsAre(MbRect(0.0, 42.0, 100.0, 52.0), MbRect(0.0, 32.0, 100.0, 42.0)));
}

TEST_F(DocumentLayouting, RightParagraphsAreMovedByTheSmallestOfTheirOffsets) {
    answer(stackedRects(2), {inkRect(0, 50.0, 101.0), inkRect(1, 50.0, 104.0)});
    EXPECT_THAT(layOutByInk(makeAligned({Right, Right})),
                ElementsAre(MbRect(-4.0, 42.0, 96.0, 52.0), MbRect(-4.0, 32.0, 96.0, 42.0)));
}

TEST_F(DocumentLayouting, AJustifiedParagraphIsPinnedAtBothEdgesOfItsInk) {
    // Unified with the left one at 3; its width is 100 - 3 + (100 - 99).
    answer(stackedRects(2), {inkRect(0, -3.0, 15.0), inkRect(1, -1.0, 99.0)});
    EXPECT_THAT(layOutByInk(makeAligned({Left, Justify})),
                ElementsAre(MbRect(3.0, 42.0, 103.0, 52.0), MbRect(3.0, 32.0, 101.0, 42.0)));
}

TEST_F(DocumentLayouting, EachDyStaysItsOwn) {
    answer(stackedRects(2), {MbRect(0.0, -8.0, 5.0, -1.0), MbRect(0.0, -18.0, 5.0, -14.0)});
    EXPECT_THAT(layOutByInk(makeAligned({Left, Left})),
                ElementsAre(MbRect(0.0, 41.0, 100.0, 51.0), MbRect(0.0, 34.0, 100.0, 44.0)));
}

TEST_F(DocumentLayouting, WidthsAreSinglePrecision) {
    answer(stackedRects(1), {inkRect(0, 0.0, 15.0)});
    CRichTextDocumentLayouting layouting(makeAligned({Left}), &textMetrics);
    layouting.setLayoutRect(MbRect(0.0, 0.0, 0.1, 50.0));
    layouting.setAlignByTextBounds(true);
    layouting.layout();
    EXPECT_EQ(layouting.getRects().at(0).xmax, static_cast<double>(0.1f));
    EXPECT_NE(layouting.getRects().at(0).xmax, 0.1);
}

TEST_F(DocumentLayouting, LayingOutTwiceGivesTheSame) {
    answer(stackedRects(2), {inkRect(0, -3.0, 15.0), inkRect(1, 1.0, 15.0)});
    CRichTextDocumentLayouting layouting(makeAligned({Left, Justify}), &textMetrics);
    layouting.setLayoutRect(box);
    layouting.setAlignByTextBounds(true);
    layouting.layout();
    const std::vector<MbRect> first = layouting.getRects();
    layouting.layout();
    EXPECT_EQ(layouting.getRects(), first);
}

TEST_F(DocumentLayouting, RectanglesThatDoNotFitTheDocumentAreAViolationAndKeepTheResults) {
    CRichTextDocumentLayouting layouting(makeAligned({Left}), &textMetrics);
    layouting.setLayoutRect(box);
    layouting.setAlignByTextBounds(true);
    answer(stackedRects(1), {inkRect(0, 0.0, 1.0)});
    layouting.layout();
    const std::vector<MbRect> before = layouting.getRects();

    answer(stackedRects(2), {inkRect(0, 0.0, 1.0), inkRect(1, 0.0, 1.0)});
    EXPECT_EQ(violationPlace<common::ECheckViolation>([&] { layouting.layout(); }),
              "Assertion violation: FontEngine/src/RichTextDocumentLayouting");
    EXPECT_EQ(layouting.getRects(), before);

    answer(stackedRects(2), {inkRect(0, 0.0, 1.0)});
    EXPECT_EQ(violationPlace<common::ECheckViolation>([&] { layouting.layout(); }),
              "Assertion violation: FontEngine/src/TextUtils");
    EXPECT_EQ(layouting.getRects(), before);

    answer({}, {});
    EXPECT_THROW(layouting.layout(), std::out_of_range);
    EXPECT_EQ(layouting.getRects(), before);
}

TEST_F(DocumentLayouting, ErrorsOfTheServicePassThroughAndKeepTheResults) {
    CRichTextDocumentLayouting layouting(makeAligned({Left}), &textMetrics);
    answer(stackedRects(1), {});
    layouting.layout();
    EXPECT_CALL(textMetrics, getParagraphRects(_, _, _)).WillOnce(testing::Throw(std::runtime_error("failed")));
    EXPECT_THROW(layouting.layout(), std::runtime_error);
    EXPECT_EQ(layouting.getRects(), stackedRects(1));
}

TEST_F(DocumentLayouting, OwnsACopyOfTheDocument) {
    answer(stackedRects(1), {});
    render::CRichTextDocument document = makeAligned({Right});
    CRichTextDocumentLayouting layouting(document, &textMetrics);
    document = makeAligned({Left, Left});
    const std::vector<render::CRichTextParagraph> paragraphs = layouting.getParagraphs();
    ASSERT_EQ(paragraphs.size(), 1u);
    EXPECT_EQ(paragraphs[0].alignment, Right);
}

TEST_F(DocumentLayouting, ReturnsTheParagraphsInTheirOrderAndNoRegions) {
    const CRichTextDocumentLayouting layouting(makeAligned({Left, Right, Center}), &textMetrics);
    std::vector<eRichTextParagraphAlignment> alignments;
    for (const render::CRichTextParagraph& paragraph : layouting.getParagraphs())
        alignments.push_back(paragraph.alignment);
    EXPECT_THAT(alignments, ElementsAre(Left, Right, Center));
    EXPECT_THAT(layouting.getRegions(), IsEmpty());
    EXPECT_THAT(layouting.getRects(), IsEmpty());
}
