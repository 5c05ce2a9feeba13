#include <FontEngine/TextUtils.h>

#include <limits>
#include <stdexcept>

#include "../../FontEngine/src/ParagraphPlacement.h"
#include "MockTextMetrics.h"
#include "TestDocuments.h"

using namespace testdocuments;
using fonts::getRectPointToAlignTo;
using testing::_;
using testing::Ref;
using testing::Return;
using testing::StrictMock;

namespace {

constexpr MbRect rect(1.0, 2.0, 5.0, 10.0);

MbCartPoint pointOf(eRichTextParagraphAlignment alignment, eRichTextParagraphVerticalAlignment verticalAlignment) {
    return getRectPointToAlignTo(makeParagraph(L"x", alignment, verticalAlignment), rect);
}

} // namespace

TEST(GetRectPointToAlignTo, EachAlignmentPinsItsEdge) {
    const auto top = eRichTextParagraphVerticalAlignment::Top;
    EXPECT_EQ(pointOf(eRichTextParagraphAlignment::Left, top), (MbCartPoint{1.0, 10.0}));
    EXPECT_EQ(pointOf(eRichTextParagraphAlignment::Right, top), (MbCartPoint{5.0, 10.0}));
    EXPECT_EQ(pointOf(eRichTextParagraphAlignment::Center, top), (MbCartPoint{3.0, 10.0}));
    const auto left = eRichTextParagraphAlignment::Left;
    EXPECT_EQ(pointOf(left, eRichTextParagraphVerticalAlignment::Middle), (MbCartPoint{1.0, 6.0}));
    EXPECT_EQ(pointOf(left, eRichTextParagraphVerticalAlignment::Bottom), (MbCartPoint{1.0, 2.0}));
}

TEST(GetRectPointToAlignTo, CenterOfARectangleOfZeroWidthIsItsLeftEdge) {
    const MbRect line(0.1, 0.0, 0.1, 1.0);
    EXPECT_EQ(getRectPointToAlignTo(makeParagraph(L"x", eRichTextParagraphAlignment::Center), line).x, 0.1);
}

TEST(GetRectPointToAlignTo, JustifyAndDefaultGiveTheSamePointAsLeftAndTop) {
    const MbCartPoint leftTop = pointOf(eRichTextParagraphAlignment::Left, eRichTextParagraphVerticalAlignment::Top);
    EXPECT_EQ(pointOf(eRichTextParagraphAlignment::Justify, eRichTextParagraphVerticalAlignment::Default), leftTop);
    EXPECT_EQ(pointOf(eRichTextParagraphAlignment::Default, eRichTextParagraphVerticalAlignment::Default), leftTop);
}

TEST(GetRectPointToAlignTo, UnknownValuesActAsLeftAndTop) {
    EXPECT_EQ(pointOf(eRichTextParagraphAlignment{77}, eRichTextParagraphVerticalAlignment{-1}),
              (MbCartPoint{1.0, 10.0}));
}

TEST(GetRectPointToAlignTo, TheMiddleIsComputedDownwardsFromTheTopAndTheCentreRightwards) {
    // Each form rounds otherwise here, and the last bits tell which one it was.
    const MbRect awkward(0.1, 0.2, 0.7, 1.9);
    const auto paragraph =
        makeParagraph(L"x", eRichTextParagraphAlignment::Center, eRichTextParagraphVerticalAlignment::Middle);
    const MbCartPoint point = getRectPointToAlignTo(paragraph, awkward);
    EXPECT_EQ(point.x, 0.1 + (0.7 - 0.1) * 0.5);
    EXPECT_NE(0.1 + (0.7 - 0.1) * 0.5, 0.7 - (0.7 - 0.1) * 0.5);
    EXPECT_NE(0.1 + (0.7 - 0.1) * 0.5, (0.1 + 0.7) * 0.5);
    EXPECT_EQ(point.y, 1.9 - (1.9 - 0.2) * 0.5);
    EXPECT_NE(1.9 - (1.9 - 0.2) * 0.5, 0.2 + (1.9 - 0.2) * 0.5);
    EXPECT_NE(1.9 - (1.9 - 0.2) * 0.5, (1.9 + 0.2) * 0.5);
}

TEST(HasPlace, ARectangleMovedByTheEmptyOneHasNone) {
    StrictMock<MockTextMetrics> textMetrics;
    const auto paragraph = makeParagraph(L"");
    const double infinity = std::numeric_limits<double>::infinity();
    for (const MbRect& nowhere :
         {MbRect(), MbRect(0.0, 1e300, 60.0, 1e300), MbRect(-1e300, -7.0, -1e300, 7.0), MbRect(0.0, 0.0, infinity, 1.0),
          MbRect(0.0, std::numeric_limits<double>::quiet_NaN(), 1.0, 1.0)})
        EXPECT_FALSE(fonts::hasPlace(textMetrics, paragraph, nowhere));
}

TEST(HasPlace, IsAskedOfTheInkWhereTheRectangleDoesNotTell) {
    StrictMock<MockTextMetrics> textMetrics;
    EXPECT_CALL(textMetrics, getDocumentGeometryRect(_, 0.0, 0.0)).WillOnce(Return(rect)).WillOnce(Return(MbRect()));
    EXPECT_TRUE(fonts::hasPlace(textMetrics, makeParagraph(L"a"), rect));
    EXPECT_FALSE(fonts::hasPlace(textMetrics, makeParagraph(L" "), rect));
}

TEST(InsetRectHorizontally, ChangesItsArgumentAndReturnsACopy) {
    MbRect box(0.0, 1.0, 10.0, 2.0);
    const MbRect inset = fonts::insetRectHorizontally(box, 2.5);
    EXPECT_EQ(inset, MbRect(2.5, 1.0, 7.5, 2.0));
    EXPECT_EQ(box, inset);
}

TEST(InsetRectHorizontally, AMarginAboveHalfTheWidthLeavesAnEmptyRectangle) {
    MbRect box(0.0, 0.0, 10.0, 10.0);
    fonts::insetRectHorizontally(box, 5.0);
    EXPECT_FALSE(box.isEmpty());
    fonts::insetRectHorizontally(box, 0.25);
    EXPECT_GT(box.xmin, box.xmax);
    EXPECT_TRUE(box.isEmpty());
}

TEST(GetParagraphBoxRects, AskForTheBoxAndSpanItsWidthFromItsTop) {
    StrictMock<MockTextMetrics> textMetrics;
    const auto document = makeAligned({eRichTextParagraphAlignment::Left, eRichTextParagraphAlignment::Right});
    EXPECT_CALL(textMetrics, getParagraphRects(Ref(document), 30.0, 50.0))
        .WillOnce(Return(std::vector<MbRect>{{3.0, -12.0, 9.0, 0.0}, {0.0, -24.0, 4.0, -12.0}}));
    const MbRect box(10.0, 100.0, 40.0, 150.0);
    EXPECT_THAT(fonts::getParagraphBoxRects(textMetrics, document, box),
                testing::ElementsAre(MbRect(10.0, 138.0, 40.0, 150.0), MbRect(10.0, 126.0, 40.0, 138.0)));
}

TEST(GetParagraphInkRects, AskForTheBoxAndMoveFromItsTopLeftCorner) {
    StrictMock<MockTextMetrics> textMetrics;
    const auto document = makeAligned({eRichTextParagraphAlignment::Left});
    EXPECT_CALL(textMetrics, getParagraphGeometryRects(Ref(document), 30.0, 50.0))
        .WillOnce(Return(std::vector<MbRect>{{3.0, -12.0, 9.0, -1.0}}));
    EXPECT_THAT(fonts::getParagraphInkRects(textMetrics, document, MbRect(10.0, 100.0, 40.0, 150.0)),
                testing::ElementsAre(MbRect(13.0, 138.0, 19.0, 149.0)));
}

TEST(GetAlignmentOffsets, GoFromTheInksPointToTheBoxs) {
    const auto document = makeAligned(
        {eRichTextParagraphAlignment::Left, eRichTextParagraphAlignment::Right, eRichTextParagraphAlignment::Center});
    const std::vector<MbRect> boxRects(3, MbRect(0.0, 0.0, 100.0, 10.0));
    const std::vector<MbRect> inkRects(3, MbRect(2.0, 1.0, 90.0, 7.0));
    EXPECT_THAT(fonts::getAlignmentOffsets(document, boxRects, inkRects),
                testing::ElementsAre(std::pair(-2.0, 3.0), std::pair(10.0, 3.0), std::pair(4.0, 3.0)));
}

TEST(GetAlignmentOffsets, VectorsOfDifferentLengthsAreAViolation) {
    const auto document = makeAligned({eRichTextParagraphAlignment::Left});
    EXPECT_EQ(violationPlace<common::ECheckViolation>([&] {
                  static_cast<void>(
                      fonts::getAlignmentOffsets(document, std::vector<MbRect>(1), std::vector<MbRect>(2)));
              }),
              "Assertion violation: FontEngine/src/TextUtils");
}

TEST(GetAlignmentOffsets, VectorsShorterThanTheDocumentAreOutOfRange) {
    const auto document = makeAligned({eRichTextParagraphAlignment::Left, eRichTextParagraphAlignment::Left});
    try {
        static_cast<void>(fonts::getAlignmentOffsets(document, std::vector<MbRect>(1), std::vector<MbRect>(1)));
        FAIL() << "the second paragraph has no rectangles";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid vector subscript");
    }
}

TEST(TextUtils, AnEmptyDocumentYieldsEmptyVectors) {
    StrictMock<MockTextMetrics> textMetrics;
    const render::CRichTextDocument document;
    const MbRect box(0.0, 0.0, 10.0, 10.0);
    EXPECT_CALL(textMetrics, getParagraphRects(_, _, _)).WillOnce(Return(std::vector<MbRect>{}));
    EXPECT_CALL(textMetrics, getParagraphGeometryRects(_, _, _)).WillOnce(Return(std::vector<MbRect>{}));
    EXPECT_TRUE(fonts::getParagraphBoxRects(textMetrics, document, box).empty());
    EXPECT_TRUE(fonts::getParagraphInkRects(textMetrics, document, box).empty());
    EXPECT_TRUE(fonts::getAlignmentOffsets(document, {}, {}).empty());
}
