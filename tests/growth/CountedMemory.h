#pragma once

#include <cstddef>

namespace growth {

/// What the process holds of the heap, whoever asked for it, and the most that it held since the last call of
/// restartPeak().
std::size_t heapBytes();
std::size_t peakHeapBytes();
void restartPeak();

} // namespace growth
