#include <FilledAreas.h>

#include <cmath>

#include <gtest/gtest.h>

namespace {

using tool::Loop;

Loop square(double x, double y, double size, bool counterClockwise) {
    Loop loop{{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}};
    if (!counterClockwise) {
        std::reverse(loop.begin(), loop.end());
    }
    return loop;
}

TEST(FilledAreas, NothingHasNoAreas) {
    EXPECT_TRUE(tool::filledAreas({}).empty());
}

TEST(FilledAreas, PartsThatStandApartAreOneArea) {
    const auto areas = tool::filledAreas({square(0, 0, 2, true), square(5, 0, 1, true)});
    ASSERT_EQ(areas.size(), 1U);
    EXPECT_EQ(areas[0].size(), 2U);
}

TEST(FilledAreas, AHoleBelongsToThePartAroundIt) {
    const auto areas = tool::filledAreas({square(1, 1, 1, false), square(0, 0, 3, true)});
    ASSERT_EQ(areas.size(), 1U);
    EXPECT_EQ(areas[0].size(), 2U);
}

TEST(FilledAreas, OverlappingPartsComeApartSoThatTheirOverlapStaysFilled) {
    const auto areas = tool::filledAreas({square(0, 0, 3, true), square(2, 2, 2, true)});
    ASSERT_EQ(areas.size(), 2U);
    EXPECT_EQ(areas[0].size(), 1U);
    EXPECT_EQ(areas[1].size(), 1U);
}

TEST(FilledAreas, AnIslandInAHoleIsAPartWithItsOwnHole) {
    const auto areas = tool::filledAreas(
        {square(0, 0, 9, false), square(1, 1, 7, true), square(2, 2, 5, false), square(3, 3, 1, true)});
    ASSERT_EQ(areas.size(), 2U);
    EXPECT_EQ(areas[0].size(), 2U);
    EXPECT_EQ(areas[1].size(), 2U);
}

std::vector<Loop> quarterCircle(double tolerance) {
    // The usual cubic for a quarter of a circle of radius 1.
    constexpr double handle = 0.5522847498;
    tool::LoopSink sink(tolerance);
    sink.moveTo({0, 0});
    sink.lineTo({1, 0});
    sink.cubicTo({1, handle}, {handle, 1}, {0, 1});
    sink.close();
    return sink.takeLoops();
}

/// A contour of straight lines.
std::vector<Loop> contour(const std::vector<MbCartPoint>& points) {
    tool::LoopSink sink(0.01);
    sink.moveTo(points.front());
    for (std::size_t i = 1; i < points.size(); ++i) {
        sink.lineTo(points[i]);
    }
    sink.close();
    return sink.takeLoops();
}

TEST(FilledAreas, ChordsStayWithinTheToleranceOfTheCurve) {
    for (const double tolerance : {0.1, 0.01, 0.001}) {
        const auto loops = quarterCircle(tolerance);
        ASSERT_EQ(loops.size(), 1U);
        const Loop& loop = loops[0];
        for (std::size_t i = 2; i < loop.size(); ++i) {
            const double x = (loop[i - 1].x + loop[i].x) / 2.0;
            const double y = (loop[i - 1].y + loop[i].y) / 2.0;
            EXPECT_NEAR(std::hypot(x, y), 1.0, tolerance + 3e-4) << tolerance;
        }
    }
    EXPECT_GT(quarterCircle(0.001)[0].size(), quarterCircle(0.1)[0].size());
}

TEST(FilledAreas, AContourThatReturnsToItsStartHasThatPointOnce) {
    EXPECT_EQ(contour({{0, 0}, {1, 0}, {0, 1}, {0, 0}}).at(0).size(), 3U);
}

TEST(FilledAreas, ContoursWithoutAreaAreLeftOut) {
    EXPECT_TRUE(contour({{0, 0}, {1, 0}}).empty());
}

} // namespace
