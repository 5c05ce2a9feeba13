#pragma once

#include <string>

#include <valgrind/callgrind.h>

namespace growth {

/// Counts the instructions of a piece of work, under Callgrind, which writes them to a file of their own. Without
/// Callgrind the work is done and nothing is counted.
template <class Work>
void count(const std::string& name, Work work) {
    CALLGRIND_ZERO_STATS;
    work();
    CALLGRIND_DUMP_STATS_AT(name.c_str());
}

} // namespace growth
