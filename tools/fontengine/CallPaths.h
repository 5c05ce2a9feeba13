#pragma once

#include <string>
#include <vector>

namespace tool {

// A file that a call of the program names, with the option or argument that does.
struct CallPath {
    enum class Use { Read, Written };

    std::string option;
    std::string path;
    Use use = Use::Read;
    std::string drawing; // whose picture it is, where each drawing has one
};

// Compares the files themselves, not their names. Throws InputError, before any
// work is done, for an output that is an input or another output too (Usage),
// for standard input that is to be read twice (Usage), and for an output that
// cannot be written (UnwritableOutput).
void checkPaths(const std::vector<CallPath>& paths);

} // namespace tool
