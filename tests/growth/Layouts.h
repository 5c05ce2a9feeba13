#pragma once

#include <cstddef>

#include "Shapes.h"

namespace growth {

/// Asks a layout of such a text everything that can be asked, and counts. What every layout is asked is asked of a
/// longer one.
void askLayout(const Shape& shape, std::size_t units);

} // namespace growth
