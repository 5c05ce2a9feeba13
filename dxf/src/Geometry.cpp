#include <dxf/Geometry.h>

#include <cmath>
#include <numbers>

namespace dxf {

Point operator+(const Point& a, const Point& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

Point operator-(const Point& a, const Point& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Point operator*(const Point& a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}

Point cross(const Point& a, const Point& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double dot(const Point& a, const Point& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

double length(const Point& a) {
    return std::hypot(a.x, a.y, a.z);
}

Point normalized(const Point& a, const Point& fallback) {
    const double size = length(a);
    if (!std::isfinite(size) || size == 0.0) {
        return fallback;
    }
    // Dividing, and not multiplying by a reciprocal, keeps (2, 0, 0) and its like exact.
    return {a.x / size, a.y / size, a.z / size};
}

Point Transform::apply(const Point& point) const {
    return origin + applyToVector(point);
}

Point Transform::applyToVector(const Point& vector) const {
    return xAxis * vector.x + yAxis * vector.y + zAxis * vector.z;
}

Transform Transform::operator*(const Transform& inner) const {
    return {applyToVector(inner.xAxis), applyToVector(inner.yAxis), applyToVector(inner.zAxis), apply(inner.origin)};
}

Transform Transform::translation(const Point& by) {
    Transform result;
    result.origin = by;
    return result;
}

Transform Transform::scaling(const Point& by) {
    Transform result;
    result.xAxis.x = by.x;
    result.yAxis.y = by.y;
    result.zAxis.z = by.z;
    return result;
}

Transform Transform::rotation(double degrees) {
    // Quarter turns are what drawings are full of, and sin(pi) is not 0.
    const double turn = std::fmod(degrees, 360.0);
    double sine = std::sin(turn * std::numbers::pi / 180.0);
    double cosine = std::cos(turn * std::numbers::pi / 180.0);
    if (const double quarters = turn / 90.0; quarters == std::floor(quarters)) {
        sine = std::round(sine);
        cosine = std::round(cosine);
    }
    Transform result;
    result.xAxis = {cosine, sine, 0.0};
    result.yAxis = {-sine, cosine, 0.0};
    return result;
}

Transform Transform::fromExtrusion(const Point& extrusion) {
    // The format's rule: near the world's z axis the plane's x axis is taken from the world's y axis, elsewhere from
    // its z axis, so that small errors in an upright extrusion do not turn the plane about.
    constexpr double nearAxis = 1.0 / 64.0;
    Transform result;
    result.zAxis = normalized(extrusion, {0.0, 0.0, 1.0});
    const bool nearZ = std::abs(result.zAxis.x) < nearAxis && std::abs(result.zAxis.y) < nearAxis;
    const Point reference = nearZ ? Point{0.0, 1.0, 0.0} : Point{0.0, 0.0, 1.0};
    result.xAxis = normalized(cross(reference, result.zAxis), {1.0, 0.0, 0.0});
    result.yAxis = normalized(cross(result.zAxis, result.xAxis), {0.0, 1.0, 0.0});
    return result;
}

} // namespace dxf
