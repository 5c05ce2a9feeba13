#pragma once

#include <cstddef>

#include "Shapes.h"

namespace growth {

/// Reads such a content and asks the library everything that can be asked of its document, and counts.
void askDocument(const Shape& shape, std::size_t units);

} // namespace growth
