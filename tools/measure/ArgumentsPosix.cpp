#include "Arguments.h"

namespace tool {

std::vector<std::string> commandLineArguments(int argc, char** argv) {
    return {argv + 1, argv + argc};
}

} // namespace tool
