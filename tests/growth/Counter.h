#pragma once

#include <string>

#include <valgrind/callgrind.h>

namespace growth {

/// Whether counting has begun. Before it, what is kept of fonts and words is found out.
inline bool isCounting = false;

/// Begins to count.
inline void startCounting() {
    isCounting = true;
    CALLGRIND_START_INSTRUMENTATION;
}

/// Counts the instructions of a piece of work, under Callgrind, which writes them to a file of their own. Without
/// Callgrind the work is done and nothing is counted.
template <class Work>
void count(const std::string& name, Work work) {
    if (isCounting) {
        CALLGRIND_ZERO_STATS;
    }
    work();
    if (isCounting) {
        CALLGRIND_DUMP_STATS_AT(name.c_str());
    }
}

} // namespace growth
