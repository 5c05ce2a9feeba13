#include "../../FontEngine/src/RichTextDxfLayouting.h"

#include <stdexcept>

#include "../../FontEngine/src/ParagraphPlacement.h"
#include "MockTextMetrics.h"
#include "TestDocuments.h"

using namespace testdocuments;
using fonts::CRichTextDxfLayouting;
using testing::_;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Return;
using testing::StrictMock;

namespace {

constexpr auto Left = eRichTextParagraphAlignment::Left;
constexpr auto Right = eRichTextParagraphAlignment::Right;

constexpr MbRect box(10.0, 0.0, 110.0, 50.0);

class DxfLayouting : public testing::Test {
protected:
    void answer(std::vector<MbRect> rects, std::vector<MbRect> inkRects) {
        ON_CALL(textMetrics, getParagraphRects(_, _, _)).WillByDefault(Return(std::move(rects)));
        ON_CALL(textMetrics, getParagraphGeometryRects(_, _, _)).WillByDefault(Return(std::move(inkRects)));
    }

    NiceMock<MockTextMetrics> textMetrics;
};

} // namespace

TEST(RichTextDxfLayouting, AFreshLayoutingLaidOutWithAnUnsetBoxHasNoRectanglesAndMeasuresNothing) {
    const StrictMock<MockTextMetrics> textMetrics;
    const auto document = makeAligned({Left});
    CRichTextDxfLayouting layouting(document, &textMetrics);
    layouting.layout();
    EXPECT_THAT(layouting.getRects(), IsEmpty());
}

TEST_F(DxfLayouting, AnEmptyBoxLeavesThePreviousResultsInPlace) {
    answer({MbRect(0.0, -10.0, 20.0, 0.0)}, {MbRect(1.0, -9.0, 15.0, -2.0)});
    const auto document = makeAligned({Left});
    CRichTextDxfLayouting layouting(document, &textMetrics);
    layouting.setLayoutRect(box);
    layouting.layout();
    const std::vector<MbRect> before = layouting.getRects();
    ASSERT_EQ(before.size(), 1u);

    layouting.setLayoutRect(MbRect());
    layouting.layout();
    EXPECT_EQ(layouting.getRects(), before);

    layouting.setLayoutRect(box);
    layouting.setHorizontalMargin(51.0f);
    layouting.layout();
    EXPECT_EQ(layouting.getRects(), before);
}

TEST_F(DxfLayouting, ByDefaultALeftTopParagraphStandsAtItsInkAndKeepsTheBoxsWidth) {
    answer({MbRect(0.0, -10.0, 20.0, 0.0)}, {MbRect(1.5, -9.0, 15.0, -2.0)});
    const auto document = makeAligned({Left});
    CRichTextDxfLayouting layouting(document, &textMetrics);
    layouting.setLayoutRect(box);
    layouting.layout();
    const MbRect rect = layouting.getRects().at(0);
    EXPECT_EQ(rect.xmin, 10.0 + 1.5);
    EXPECT_EQ(rect.ymax, 50.0 - 2.0);
    EXPECT_EQ(rect.xmax - rect.xmin, 100.0);
    EXPECT_EQ(rect.ymax - rect.ymin, 10.0);
}

TEST_F(DxfLayouting, ARightBottomParagraphStandsAtTheOtherCornerOfItsInk) {
    answer({MbRect(0.0, -10.0, 20.0, 0.0)}, {MbRect(70.0, -9.0, 98.0, -2.0)});
    const auto document =
        render::makeDocument({makeParagraph(L"x", Right, eRichTextParagraphVerticalAlignment::Bottom)});
    CRichTextDxfLayouting layouting(document, &textMetrics);
    layouting.setLayoutRect(box);
    layouting.layout();
    EXPECT_EQ(layouting.getRects().at(0).xmax, 10.0 + 98.0);
    EXPECT_EQ(layouting.getRects().at(0).ymin, 50.0 - 9.0);
}

TEST_F(DxfLayouting, OffsetsAreNotUnifiedAcrossParagraphs) {
    answer({MbRect(0.0, -10.0, 20.0, 0.0), MbRect(0.0, -20.0, 20.0, -10.0)},
           {MbRect(-1.0, -8.0, 15.0, 0.0), MbRect(-3.0, -18.0, 15.0, -10.0)});
    const auto document = makeAligned({Left, Left});
    CRichTextDxfLayouting layouting(document, &textMetrics);
    layouting.setLayoutRect(box);
    layouting.layout();
    EXPECT_THAT(layouting.getRects(), ElementsAre(MbRect(9.0, 40.0, 109.0, 50.0), MbRect(7.0, 30.0, 107.0, 40.0)));
}

TEST(RichTextDxfLayouting, WithTheFlagTheResultsAreTheBoxRectanglesAndNoInkIsMeasured) {
    StrictMock<MockTextMetrics> textMetrics;
    EXPECT_CALL(textMetrics, getParagraphRects(_, 96.0, 50.0))
        .Times(2)
        .WillRepeatedly(Return(std::vector<MbRect>{{0.0, -10.0, 20.0, 0.0}, {0.0, -22.0, 20.0, -10.0}}));
    const auto document = makeAligned({Left, Right});
    CRichTextDxfLayouting layouting(document, &textMetrics);
    layouting.setLayoutRect(box);
    layouting.setHorizontalMargin(2.0f);
    layouting.setAlignByTextBounds(true);
    layouting.layout();
    EXPECT_EQ(layouting.getRects(), fonts::getParagraphBoxRects(textMetrics, document, MbRect(12.0, 0.0, 108.0, 50.0)));
}

TEST_F(DxfLayouting, SeesChangesOfTheBorrowedDocument) {
    render::CRichTextDocument document = makeAligned({Left});
    const CRichTextDxfLayouting layouting(document, &textMetrics);
    document = makeAligned({Right, Left});
    const std::vector<render::CRichTextParagraph> paragraphs = layouting.getParagraphs();
    ASSERT_EQ(paragraphs.size(), 2u);
    EXPECT_EQ(paragraphs[0].alignment, Right);
    EXPECT_EQ(paragraphs[1].alignment, Left);
    EXPECT_THAT(layouting.getRegions(), IsEmpty());
}

TEST_F(DxfLayouting, InkOfAnotherLengthIsAViolationAndKeepsTheResults) {
    answer({MbRect(0.0, -10.0, 20.0, 0.0)}, {MbRect(1.0, -9.0, 15.0, -2.0)});
    const auto document = makeAligned({Left});
    CRichTextDxfLayouting layouting(document, &textMetrics);
    layouting.setLayoutRect(box);
    layouting.layout();
    const std::vector<MbRect> before = layouting.getRects();
    answer({MbRect(0.0, -10.0, 20.0, 0.0)}, {});
    EXPECT_EQ(violationPlace<common::ECheckViolation>([&] { layouting.layout(); }),
              "Assertion violation: FontEngine/src/TextUtils");
    EXPECT_EQ(layouting.getRects(), before);
}

// The plain layouting refuses such an answer; here only its ink is compared.
TEST_F(DxfLayouting, RectanglesBeyondTheDocumentPassWithTheFlagAndAreOutOfRangeWhenTooFew) {
    const auto document = makeAligned({Left});
    CRichTextDxfLayouting layouting(document, &textMetrics);
    layouting.setLayoutRect(box);
    layouting.setAlignByTextBounds(true);
    answer(std::vector<MbRect>(2, MbRect(0.0, -10.0, 20.0, 0.0)), {});
    layouting.layout();
    EXPECT_EQ(layouting.getRects().size(), 2u);

    layouting.setAlignByTextBounds(false);
    answer({}, {});
    EXPECT_THROW(layouting.layout(), std::out_of_range);
    EXPECT_EQ(layouting.getRects().size(), 2u);
}

TEST_F(DxfLayouting, ADocumentWithoutParagraphsYieldsNoRectangles) {
    answer({}, {});
    const render::CRichTextDocument document;
    CRichTextDxfLayouting layouting(document, &textMetrics);
    layouting.setLayoutRect(box);
    layouting.layout();
    EXPECT_THAT(layouting.getRects(), IsEmpty());
    EXPECT_THAT(layouting.getParagraphs(), IsEmpty());
}
