#include <geometry/MbCartPoint.h>
#include <geometry/MbRect.h>
#include <geometry/MbVector.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

namespace {

TEST(MbRect, TheDefaultIsTheEmptyRectangle) {
    const MbRect rect;
    EXPECT_EQ(rect.xmin, 1e300);
    EXPECT_EQ(rect.ymin, 1e300);
    EXPECT_EQ(rect.xmax, -1e300);
    EXPECT_EQ(rect.ymax, -1e300);
    EXPECT_TRUE(rect.isEmpty());
    EXPECT_EQ(std::bit_cast<std::uint64_t>(rect.xmin), 0x7E37E43C8800759CU);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(rect.ymax), 0xFE37E43C8800759CU);
}

TEST(MbRect, IsEmptyWhenAMinimumExceedsItsMaximum) {
    EXPECT_FALSE(MbRect(0, 0, 1, 1).isEmpty());
    EXPECT_TRUE(MbRect(2, 0, 1, 1).isEmpty());
    EXPECT_TRUE(MbRect(0, 2, 1, 1).isEmpty());
}

TEST(MbRect, EqualEdgesAreNotEmpty) {
    EXPECT_FALSE(MbRect(1, 0, 1, 2).isEmpty());
    EXPECT_FALSE(MbRect(1, 2, 1, 2).isEmpty());
}

TEST(MbRect, UnionTakesInBoth) {
    MbRect rect(0, 0, 1, 1);
    rect |= MbRect(-2, 0.5, 0.5, 3);
    EXPECT_EQ(rect, MbRect(-2, 0, 1, 3));
}

TEST(MbRect, TheEmptyRectangleIsNeutralInUnions) {
    MbRect rect(0, 1, 2, 3);
    rect |= MbRect();
    EXPECT_EQ(rect, MbRect(0, 1, 2, 3));

    MbRect empty;
    empty |= MbRect(0, 1, 2, 3);
    EXPECT_EQ(empty, MbRect(0, 1, 2, 3));

    empty = MbRect();
    empty |= MbRect();
    EXPECT_EQ(empty, MbRect());
}

TEST(MbRect, AnyEmptyRectangleIsNeutralNotOnlyTheDefaultOne) {
    MbRect rect(0, 0, 1, 1);
    rect |= MbRect(50, 5, 10, 6);
    EXPECT_EQ(rect, MbRect(0, 0, 1, 1));

    MbRect inverted(50, 5, 10, 6);
    inverted |= MbRect(0, 0, 1, 1);
    EXPECT_EQ(inverted, MbRect(0, 0, 1, 1));
}

TEST(MbRect, ARectangleWithoutAreaCountsInUnions) {
    MbRect rect(0, 0, 1, 1);
    rect |= MbRect(5, 5, 5, 5);
    EXPECT_EQ(rect, MbRect(0, 0, 5, 5));
}

TEST(MbRect, IncludingACoordinateWidensThatAxisAlone) {
    MbRect rect;
    rect.IncludeX(3);
    EXPECT_EQ(rect, MbRect(3, 1e300, 3, -1e300));
    EXPECT_TRUE(rect.isEmpty());
    rect.IncludeX(-1);
    rect.IncludeX(0);
    rect.IncludeY(2);
    EXPECT_EQ(rect, MbRect(-1, 2, 3, 2));
    rect.IncludeY(-4);
    EXPECT_EQ(rect, MbRect(-1, -4, 3, 2));
}

TEST(MbRect, MovesByADisplacement) {
    MbRect rect(0, 1, 2, 3);
    rect.Move(10, -20);
    EXPECT_EQ(rect, MbRect(10, -19, 12, -17));
}

TEST(MbRect, SettingReplacesAllEdges) {
    MbRect rect(9, 9, 9, 9);
    rect.Set(0, 1, 2, 3);
    EXPECT_EQ(rect.xmin, 0);
    EXPECT_EQ(rect.ymin, 1);
    EXPECT_EQ(rect.xmax, 2);
    EXPECT_EQ(rect.ymax, 3);
}

TEST(MbCartPoint, IsAPairOfCoordinates) {
    EXPECT_EQ(MbCartPoint(), (MbCartPoint{0, 0}));
    EXPECT_EQ((MbCartPoint{1, 2}).y, 2);
    EXPECT_NE((MbCartPoint{1, 2}), (MbCartPoint{2, 1}));
    EXPECT_EQ(MbVector(), (MbVector{0, 0}));
}

} // namespace
