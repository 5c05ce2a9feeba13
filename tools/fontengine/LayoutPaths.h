#pragma once

#include "LayoutCommand.h"

namespace tool {

// Checks all files that the command reads and writes, as checkPaths() does for
// any command, and the endings of pictures.
void checkPaths(const LayoutOptions& options);

} // namespace tool
