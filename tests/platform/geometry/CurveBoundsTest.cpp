#include "geometry/CurveBounds.h"

#include <array>
#include <numbers>

#include <gtest/gtest.h>

namespace platform {
namespace {

void expectBounds(const Bounds& bounds, double left, double top, double right, double bottom) {
    EXPECT_NEAR(bounds.left, left, 1e-9);
    EXPECT_NEAR(bounds.top, top, 1e-9);
    EXPECT_NEAR(bounds.right, right, 1e-9);
    EXPECT_NEAR(bounds.bottom, bottom, 1e-9);
}

struct CurveCase {
    std::array<Point, 4> points;
    std::array<double, 4> bounds;
};

// Bounds as fontTools.misc.bezierTools.calcCubicBounds (4.38) gives them.
TEST(CurveBounds, ofCubicsAreThoseOfTheCurve) {
    const CurveCase cases[] = {
        {{{{0, 0}, {25, 100}, {75, 100}, {100, 0}}}, {0.0, 0.0, 100.0, 75.0}},
        {{{{50, 0}, {0, 50}, {100, 50}, {50, 0}}}, {35.566243270259356, 0.0, 64.43375672974068, 37.5}},
        {{{{0, 0}, {100, -50}, {-50, -70}, {60, 10}}}, {0.0, -43.821625122969465, 60.0, 10.0}},
        {{{{3, 7}, {3, 7}, {90, -40}, {12, 12}}}, {3.0, -12.482642146744233, 44.47789115646259, 12.0}},
        {{{{0, 0}, {10, 0}, {20, 0}, {30, 0}}}, {0.0, 0.0, 30.0, 0.0}},
        {{{{-12.5, 4}, {200.25, -310.5}, {-190, 305}, {17, -3}}},
         {-45.69154114653094, -88.30563718112975, 53.20779988784271, 86.03112899813334}},
    };
    for (const CurveCase& c : cases) {
        Bounds bounds;
        includeCubic(bounds, c.points[0], c.points[1], c.points[2], c.points[3]);
        expectBounds(bounds, c.bounds[0], c.bounds[1], c.bounds[2], c.bounds[3]);
    }
}

// Bounds as fontTools.misc.bezierTools.calcQuadraticBounds (4.38) gives them.
TEST(CurveBounds, ofQuadraticsAreThoseOfTheCurve) {
    const CurveCase cases[] = {
        {{{{0, 0}, {50, 100}, {100, 0}}}, {0.0, 0.0, 100.0, 50.0}},
        {{{{0, 0}, {100, 0}, {100, 100}}}, {0.0, 0.0, 100.0, 100.0}},
        {{{{10, 20}, {-30, 25}, {40, 80}}}, {-4.545454545454547, 20.0, 40.0, 80.0}},
        {{{{0, 0}, {-8.5, 31.25}, {2, 9}}}, {-3.8026315789473686, 0.0, 2.0, 18.253504672897197}},
    };
    for (const CurveCase& c : cases) {
        Bounds bounds;
        includeQuadratic(bounds, c.points[0], c.points[1], c.points[2]);
        expectBounds(bounds, c.bounds[0], c.bounds[1], c.bounds[2], c.bounds[3]);
    }
}

TEST(CurveBounds, ofAQuadraticRaisedToACubicAreTheSame) {
    const Point from{10, 20};
    const Point control{-30, 25};
    const Point to{40, 80};
    Bounds bounds;
    includeCubic(bounds, from, {from.x + 2.0 / 3.0 * (control.x - from.x), from.y + 2.0 / 3.0 * (control.y - from.y)},
                 {to.x + 2.0 / 3.0 * (control.x - to.x), to.y + 2.0 / 3.0 * (control.y - to.y)}, to);
    expectBounds(bounds, -4.545454545454547, 20.0, 40.0, 80.0);
}

TEST(CurveBounds, ofAnArcReachOnlyTheExtremaItPasses) {
    using std::numbers::pi;
    const EllipticArc circle{{10, 20}, {5, 0}, {0, 5}, 0.0, pi};
    Bounds half;
    includeArc(half, circle);
    expectBounds(half, 5.0, 20.0, 15.0, 25.0);

    Bounds backwards;
    includeArc(backwards, {{10, 20}, {5, 0}, {0, 5}, 0.0, -pi});
    expectBounds(backwards, 5.0, 15.0, 15.0, 20.0);

    Bounds eighth;
    includeArc(eighth, {{0, 0}, {1, 0}, {0, 1}, 0.0, pi / 4.0});
    expectBounds(eighth, std::numbers::sqrt2 / 2.0, 0.0, 1.0, std::numbers::sqrt2 / 2.0);
}

// An ellipse with half axes a and b, turned by t, is sqrt(a² cos² t + b² sin² t) wide to each side.
TEST(CurveBounds, ofATurnedEllipseFollowItsHalfAxes) {
    using std::numbers::pi;
    const double c = 0.5;                       // cos 60 degrees
    const double s = std::numbers::sqrt3 / 2.0; // sin 60 degrees
    Bounds bounds;
    includeArc(bounds, {{0, 0}, {4.0 * c, 4.0 * s}, {-2.0 * s, 2.0 * c}, 0.3, 2.0 * pi});
    expectBounds(bounds, -2.6457513110645907, -3.605551275463989, 2.6457513110645907, 3.605551275463989); // √7, √13
}

TEST(CurveBounds, withoutPointsAreInverted) {
    Bounds bounds;
    EXPECT_TRUE(bounds.empty());
    EXPECT_GT(bounds.left, bounds.right);
    bounds.include(Bounds{});
    EXPECT_TRUE(bounds.empty());
    bounds.include(Point{3, 4});
    EXPECT_FALSE(bounds.empty());
}

} // namespace
} // namespace platform
