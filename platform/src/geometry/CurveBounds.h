#pragma once

#include <limits>

namespace platform {

/// A point or vector of the plane, in the units of whoever asks.
struct Point {
    double x = 0.0;
    double y = 0.0;
};

/// A rectangle that grows. Without points it is inverted (left > right).
struct Bounds {
    double left = std::numeric_limits<double>::infinity();
    double top = std::numeric_limits<double>::infinity();
    double right = -std::numeric_limits<double>::infinity();
    double bottom = -std::numeric_limits<double>::infinity();

    bool empty() const { return left > right || top > bottom; }
    void include(Point point);
    void include(const Bounds& other);
};

// Each of these widens `bounds` by the extrema of the curve itself, not of its control points. The start point counts.

void includeLine(Bounds& bounds, Point from, Point to);
void includeQuadratic(Bounds& bounds, Point from, Point control, Point to);
void includeCubic(Bounds& bounds, Point from, Point control1, Point control2, Point to);

/// A piece of an ellipse: center + u cos t + v sin t for t between `start` and `start + sweep` (radians). Affine maps
/// keep this form, so the bounds stay exact under every transform.
struct EllipticArc {
    Point center;
    Point u;
    Point v;
    double start = 0.0;
    double sweep = 0.0;

    Point at(double t) const;
};

void includeArc(Bounds& bounds, const EllipticArc& arc);

} // namespace platform
