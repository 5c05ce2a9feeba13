#include "geometry/EllipticArc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace platform {

std::optional<EllipticArc> ellipticArc(D2D1_POINT_2F from, const D2D1_ARC_SEGMENT& segment) {
    double rx = std::abs(static_cast<double>(segment.size.width));
    double ry = std::abs(static_cast<double>(segment.size.height));
    const double dx = (static_cast<double>(from.x) - static_cast<double>(segment.point.x)) / 2.0;
    const double dy = (static_cast<double>(from.y) - static_cast<double>(segment.point.y)) / 2.0;
    if (rx == 0.0 || ry == 0.0 || (dx == 0.0 && dy == 0.0)) {
        return std::nullopt;
    }

    // Half the chord in the frame where the ellipse is a circle of radius 1.
    const double angle = static_cast<double>(segment.rotationAngle) * std::numbers::pi / 180.0;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    double x = (c * dx + s * dy) / rx;
    double y = (c * dy - s * dx) / ry;
    const double reach = std::hypot(x, y);
    if (reach > 1.0) {
        rx *= reach;
        ry *= reach;
        x /= reach;
        y /= reach;
    }

    // The centre lies on the perpendicular of the chord, on the side that size and direction ask for.
    const double chord = x * x + y * y;
    double height = std::sqrt(std::max(0.0, (1.0 - chord) / chord));
    const bool clockwise = segment.sweepDirection == D2D1_SWEEP_DIRECTION_CLOCKWISE;
    const bool large = segment.arcSize == D2D1_ARC_SIZE_LARGE;
    if (clockwise == large) {
        height = -height;
    }
    const double centerX = height * y;
    const double centerY = -height * x;

    EllipticArc arc;
    arc.u = {rx * c, rx * s};
    arc.v = {-ry * s, ry * c};
    arc.center = {(static_cast<double>(from.x) + static_cast<double>(segment.point.x)) / 2.0 + arc.u.x * centerX +
                      arc.v.x * centerY,
                  (static_cast<double>(from.y) + static_cast<double>(segment.point.y)) / 2.0 + arc.u.y * centerX +
                      arc.v.y * centerY};
    arc.start = std::atan2(y - centerY, x - centerX);
    arc.sweep = std::atan2(-y - centerY, -x - centerX) - arc.start;
    // The y axis points down, so growing angles run clockwise.
    const double turn = 2.0 * std::numbers::pi;
    if (clockwise && arc.sweep < 0.0) {
        arc.sweep += turn;
    } else if (!clockwise && arc.sweep > 0.0) {
        arc.sweep -= turn;
    }
    return arc;
}

} // namespace platform
