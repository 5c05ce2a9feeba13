#include "geometry/CurveBounds.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace platform {

namespace {

double quadraticAt(double p0, double p1, double p2, double t) {
    const double s = 1.0 - t;
    return s * s * p0 + 2.0 * s * t * p1 + t * t * p2;
}

double cubicAt(double p0, double p1, double p2, double p3, double t) {
    const double s = 1.0 - t;
    return s * s * s * p0 + 3.0 * s * s * t * p1 + 3.0 * s * t * t * p2 + t * t * t * p3;
}

struct Range {
    double low;
    double high;

    void include(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
    bool contains(double value) const { return low <= value && value <= high; }
};

Range quadraticRange(double p0, double p1, double p2) {
    Range range{std::min(p0, p2), std::max(p0, p2)};
    // A control value between the ends cannot push the curve past them.
    if (!range.contains(p1)) {
        range.include(quadraticAt(p0, p1, p2, (p0 - p1) / (p0 - 2.0 * p1 + p2)));
    }
    return range;
}

// The parameters in (0, 1) where the derivative of the cubic is zero. Solved in the form that keeps both roots exact
// when the quadratic term nearly vanishes.
int cubicExtrema(double p0, double p1, double p2, double p3, std::array<double, 2>& roots) {
    const double a = 3.0 * (p1 - p2) + p3 - p0;
    const double b = 2.0 * (p0 - 2.0 * p1 + p2);
    const double c = p1 - p0;
    const double discriminant = b * b - 4.0 * a * c;
    int count = 0;
    const auto keep = [&](double numerator, double denominator) {
        const double t = numerator / denominator;
        if (t > 0.0 && t < 1.0) {
            roots[static_cast<std::size_t>(count++)] = t;
        }
    };
    if (discriminant < 0.0) {
        return 0;
    }
    const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
    if (a != 0.0) {
        keep(q, a);
    }
    if (q != 0.0) {
        keep(c, q);
    }
    return count;
}

Range cubicRange(double p0, double p1, double p2, double p3) {
    Range range{std::min(p0, p3), std::max(p0, p3)};
    if (!range.contains(p1) || !range.contains(p2)) {
        std::array<double, 2> roots{};
        const int count = cubicExtrema(p0, p1, p2, p3, roots);
        for (int i = 0; i < count; ++i) {
            range.include(cubicAt(p0, p1, p2, p3, roots[static_cast<std::size_t>(i)]));
        }
    }
    return range;
}

void includeRanges(Bounds& bounds, Range x, Range y) {
    bounds.include(Point{x.low, y.low});
    bounds.include(Point{x.high, y.high});
}

bool sweeps(const EllipticArc& arc, double t) {
    const double turn = 2.0 * std::numbers::pi;
    const double from = arc.sweep >= 0.0 ? arc.start : arc.start + arc.sweep;
    double past = std::fmod(t - from, turn);
    if (past < 0.0) {
        past += turn;
    }
    return past <= std::abs(arc.sweep);
}

} // namespace

void Bounds::include(Point point) {
    left = std::min(left, point.x);
    top = std::min(top, point.y);
    right = std::max(right, point.x);
    bottom = std::max(bottom, point.y);
}

void Bounds::include(const Bounds& other) {
    left = std::min(left, other.left);
    top = std::min(top, other.top);
    right = std::max(right, other.right);
    bottom = std::max(bottom, other.bottom);
}

void includeLine(Bounds& bounds, Point from, Point to) {
    bounds.include(from);
    bounds.include(to);
}

void includeQuadratic(Bounds& bounds, Point from, Point control, Point to) {
    includeRanges(bounds, quadraticRange(from.x, control.x, to.x), quadraticRange(from.y, control.y, to.y));
}

void includeCubic(Bounds& bounds, Point from, Point control1, Point control2, Point to) {
    includeRanges(bounds, cubicRange(from.x, control1.x, control2.x, to.x),
                  cubicRange(from.y, control1.y, control2.y, to.y));
}

Point EllipticArc::at(double t) const {
    const double c = std::cos(t);
    const double s = std::sin(t);
    return {center.x + u.x * c + v.x * s, center.y + u.y * c + v.y * s};
}

void includeArc(Bounds& bounds, const EllipticArc& arc) {
    includeLine(bounds, arc.at(arc.start), arc.at(arc.start + arc.sweep));
    const double extremeX = std::atan2(arc.v.x, arc.u.x);
    const double extremeY = std::atan2(arc.v.y, arc.u.y);
    for (const double t : {extremeX, extremeX + std::numbers::pi, extremeY, extremeY + std::numbers::pi}) {
        if (sweeps(arc, t)) {
            bounds.include(arc.at(t));
        }
    }
}

} // namespace platform
