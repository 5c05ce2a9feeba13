#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include "lines/TextPipeline.h"

namespace platform {

/// A box that grows.
struct InkBox {
    float left = std::numeric_limits<float>::infinity();
    float top = std::numeric_limits<float>::infinity();
    float right = -std::numeric_limits<float>::infinity();
    float bottom = -std::numeric_limits<float>::infinity();

    void include(const InkBox& other) {
        left = std::min(left, other.left);
        top = std::min(top, other.top);
        right = std::max(right, other.right);
        bottom = std::max(bottom, other.bottom);
    }
    [[nodiscard]] bool isEmpty() const noexcept { return !(left <= right); }
};

/// The ink of a line, relative to the layout's box.
InkBox inkOf(const TextPipeline& pipeline, std::size_t line);

/// The room at the ends of every line of a pipeline whose lines are placed.
std::vector<SideBearings> findSideBearings(const TextPipeline& pipeline);

} // namespace platform
