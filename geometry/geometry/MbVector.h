#pragma once

/// A displacement in the plane.
struct MbVector {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const MbVector&, const MbVector&) noexcept = default;
};
