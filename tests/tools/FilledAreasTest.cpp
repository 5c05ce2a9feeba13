#include <FilledAreas.h>

#include <cmath>

#include <gtest/gtest.h>

namespace {

using tool::Loop;
using tool::Outline;

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

Outline quarterCircle() {
    // The usual cubic for a quarter of a circle of radius 1.
    constexpr double handle = 0.5522847498;
    Outline outline;
    outline.verbs = {Outline::Verb::Move, Outline::Verb::Line, Outline::Verb::Curve, Outline::Verb::Close};
    outline.points = {{0, 0}, {1, 0}, {1, handle}, {handle, 1}, {0, 1}};
    return outline;
}

TEST(FilledAreas, ChordsStayWithinTheToleranceOfTheCurve) {
    for (const double tolerance : {0.1, 0.01, 0.001}) {
        const auto loops = tool::flatten(quarterCircle(), tolerance);
        ASSERT_EQ(loops.size(), 1U);
        const Loop& loop = loops[0];
        for (std::size_t i = 2; i < loop.size(); ++i) {
            const double x = (loop[i - 1].x + loop[i].x) / 2.0;
            const double y = (loop[i - 1].y + loop[i].y) / 2.0;
            EXPECT_NEAR(std::hypot(x, y), 1.0, tolerance + 3e-4) << tolerance;
        }
    }
    EXPECT_GT(tool::flatten(quarterCircle(), 0.001)[0].size(), tool::flatten(quarterCircle(), 0.1)[0].size());
}

TEST(FilledAreas, AContourThatReturnsToItsStartHasThatPointOnce) {
    Outline outline;
    outline.verbs = {Outline::Verb::Move, Outline::Verb::Line, Outline::Verb::Line, Outline::Verb::Line,
                     Outline::Verb::Close};
    outline.points = {{0, 0}, {1, 0}, {0, 1}, {0, 0}};
    EXPECT_EQ(tool::flatten(outline, 0.01).at(0).size(), 3U);
}

TEST(FilledAreas, ContoursWithoutAreaAreLeftOut) {
    Outline outline;
    outline.verbs = {Outline::Verb::Move, Outline::Verb::Line, Outline::Verb::Close};
    outline.points = {{0, 0}, {1, 0}};
    EXPECT_TRUE(tool::flatten(outline, 0.01).empty());
}

} // namespace
