#pragma once

#include <string>

#include "InputError.h"

namespace tool {

struct MTextOptions {
    std::string content; // UTF-8, with its formatting codes
    std::string font;
    double capSize = 1.0;
    double width = 0.0; // of the box; 0 sets no limit
};

// Lays a content string out under the box's top edge and prints a rectangle per paragraph.
ExitCode runMText(const MTextOptions& options);

} // namespace tool
