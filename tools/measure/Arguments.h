#pragma once

#include <string>
#include <vector>

namespace tool {

// The arguments of the command line without the program's name, UTF-8.
std::vector<std::string> commandLineArguments(int argc, char** argv);

} // namespace tool
