#pragma once

#include <string>

namespace tool {

// What went wrong, in words for the person at the terminal, of the exception
// that is being handled: to be called in a handler that catches everything.
std::string describeFailure();

} // namespace tool
