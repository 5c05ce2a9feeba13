#pragma once

#include <algorithm>

/// An axis-parallel rectangle; the y axis points up. A default-constructed one is empty and neutral in unions.
struct MbRect {
    /// The empty rectangle's edges: its minima are +emptyExtent, its maxima -emptyExtent.
    static constexpr double emptyExtent = 1e300;

    constexpr MbRect() noexcept = default;
    constexpr MbRect(double left, double bottom, double right, double top) noexcept
        : xmin(left), ymin(bottom), xmax(right), ymax(top) {}

    constexpr void Set(double left, double bottom, double right, double top) noexcept {
        *this = MbRect(left, bottom, right, top);
    }

    /// True when a minimum exceeds its maximum. Equal edges are a rectangle without area, which is not empty.
    [[nodiscard]] constexpr bool isEmpty() const noexcept { return xmin > xmax || ymin > ymax; }

    /// Adds the displacement to the edges, whatever they are.
    constexpr void Move(double dx, double dy) noexcept {
        xmin += dx;
        xmax += dx;
        ymin += dy;
        ymax += dy;
    }

    // In parentheses, since <windows.h> makes min and max macros in a host that does not prevent it.

    /// Widens to take in the coordinate.
    constexpr void IncludeX(double x) noexcept {
        xmin = (std::min)(xmin, x);
        xmax = (std::max)(xmax, x);
    }
    /// Widens to take in the coordinate.
    constexpr void IncludeY(double y) noexcept {
        ymin = (std::min)(ymin, y);
        ymax = (std::max)(ymax, y);
    }

    /// Widens to take in `other`, unless that is empty; an empty rectangle becomes `other`.
    constexpr MbRect& operator|=(const MbRect& other) noexcept {
        if (other.isEmpty()) {
            return *this;
        }
        if (isEmpty()) {
            return *this = other;
        }
        IncludeX(other.xmin);
        IncludeX(other.xmax);
        IncludeY(other.ymin);
        IncludeY(other.ymax);
        return *this;
    }

    friend constexpr bool operator==(const MbRect&, const MbRect&) noexcept = default;

    double xmin = emptyExtent;
    double ymin = emptyExtent;
    double xmax = -emptyExtent;
    double ymax = -emptyExtent;
};
