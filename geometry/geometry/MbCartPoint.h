#pragma once

/// A point of the plane.
struct MbCartPoint {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const MbCartPoint&, const MbCartPoint&) noexcept = default;
};
