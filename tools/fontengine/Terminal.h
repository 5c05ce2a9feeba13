#pragma once

namespace tool {

// True where a person watches standard error.
bool standardErrorIsTerminal();

} // namespace tool
