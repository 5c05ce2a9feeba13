#pragma once

#include <Common/FontEngineExport.h>
namespace dxf {

/// A point or vector in drawing units.
struct Point {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    friend bool operator==(const Point&, const Point&) = default;
};

FONTENGINE_DXF_API Point operator+(const Point& a, const Point& b);
FONTENGINE_DXF_API Point operator-(const Point& a, const Point& b);
FONTENGINE_DXF_API Point operator*(const Point& a, double factor);
FONTENGINE_DXF_API Point cross(const Point& a, const Point& b);
FONTENGINE_DXF_API double dot(const Point& a, const Point& b);
FONTENGINE_DXF_API double length(const Point& a);
/// `a` at length 1, or `fallback` when `a` has no direction (zero or not finite).
FONTENGINE_DXF_API Point normalized(const Point& a, const Point& fallback);

/// An affine map: origin + x * xAxis + y * yAxis + z * zAxis.
struct FONTENGINE_DXF_API Transform {
    Point xAxis{1.0, 0.0, 0.0};
    Point yAxis{0.0, 1.0, 0.0};
    Point zAxis{0.0, 0.0, 1.0};
    Point origin;

    [[nodiscard]] Point apply(const Point& point) const;
    /// A direction or distance: the origin does not count.
    [[nodiscard]] Point applyToVector(const Point& vector) const;
    /// The map that applies `inner` first.
    [[nodiscard]] Transform operator*(const Transform& inner) const;
    friend bool operator==(const Transform&, const Transform&) = default;

    static Transform translation(const Point& by);
    static Transform scaling(const Point& by);
    /// About the z axis, counter-clockwise, in degrees; multiples of 90 are exact.
    static Transform rotation(double degrees);
    /// From an entity's own plane to the world, by the arbitrary axis rule. A zero extrusion counts as (0, 0, 1).
    static Transform fromExtrusion(const Point& extrusion);
};

} // namespace dxf
