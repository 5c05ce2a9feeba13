#pragma once

#include <string>

namespace tool {

// What went wrong, in words for the person at the terminal, of the exception
// that is being handled: to be called in a handler that catches everything.
std::string describeFailure();

// Says on standard error what is wrong, in one line, whatever characters the name
// of a file has.
void complain(std::string message);

} // namespace tool
