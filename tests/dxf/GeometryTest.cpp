#include <dxf/Geometry.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using dxf::Point;
using dxf::Transform;

void expectNear(const Point& a, const Point& b) {
    EXPECT_NEAR(a.x, b.x, 1e-12);
    EXPECT_NEAR(a.y, b.y, 1e-12);
    EXPECT_NEAR(a.z, b.z, 1e-12);
}

TEST(Geometry, QuarterTurnsAreExact) {
    EXPECT_EQ(Transform::rotation(90).apply({1, 0, 0}), (Point{0, 1, 0}));
    EXPECT_EQ(Transform::rotation(-450).apply({1, 0, 0}), (Point{0, -1, 0}));
    EXPECT_EQ(Transform::rotation(180).apply({2, 3, 4}), (Point{-2, -3, 4}));
    expectNear(Transform::rotation(30).apply({1, 0, 0}), {std::sqrt(3.0) / 2, 0.5, 0});
}

TEST(Geometry, ThePlaneOfAnExtrusionFollowsTheArbitraryAxisRule) {
    EXPECT_EQ(Transform::fromExtrusion({0, 0, 1}), Transform{});
    EXPECT_EQ(Transform::fromExtrusion({0, 0, 0}), Transform{});
    const Transform mirrored = Transform::fromExtrusion({0, 0, -1});
    EXPECT_EQ(mirrored.apply({1, 2, 3}), (Point{-1, 2, -3}));
    // Looking along y: x stays in the horizontal plane, y points up.
    const Transform front = Transform::fromExtrusion({0, -1, 0});
    expectNear(front.apply({1, 0, 0}), {1, 0, 0});
    expectNear(front.apply({0, 1, 0}), {0, 0, 1});
    // The switch to the world's y axis lies at one sixty-fourth.
    const double inside = 1.0 / 65;
    const double outside = 1.0 / 63;
    expectNear(Transform::fromExtrusion({inside, 0, std::sqrt(1 - inside * inside)}).yAxis, {0, 1, 0});
    expectNear(Transform::fromExtrusion({outside, 0, std::sqrt(1 - outside * outside)}).xAxis, {0, 1, 0});
}

TEST(Geometry, TransformsCombineFromTheRight) {
    const Transform both = Transform::translation({10, 0, 0}) * Transform::rotation(90);
    EXPECT_EQ(both.apply({1, 0, 0}), (Point{10, 1, 0}));
    EXPECT_EQ(both.applyToVector({1, 0, 0}), (Point{0, 1, 0}));
    EXPECT_EQ(Transform::scaling({2, 3, 4}).apply({1, 1, 1}), (Point{2, 3, 4}));
}

TEST(Geometry, AVectorWithoutDirectionGivesTheFallback) {
    const Point fallback{0, 1, 0};
    EXPECT_EQ(dxf::normalized({0, 0, 0}, fallback), fallback);
    EXPECT_EQ(dxf::normalized({std::numeric_limits<double>::infinity(), 0, 0}, fallback), fallback);
    EXPECT_EQ(dxf::normalized({0, 0, -3}, fallback), (Point{0, 0, -1}));
}

} // namespace
