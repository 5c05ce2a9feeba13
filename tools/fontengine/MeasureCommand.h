#pragma once

#include <string>

#include "InputError.h"

namespace tool {

struct MeasureOptions {
    std::string text; // UTF-8
    std::string font = "DejaVu Sans";
    double capSize = 1.0;
    bool bold = false;
    bool italic = false;
    bool json = false;
};

// Prints the boxes, the baseline and the font's metrics of one line of text.
ExitCode runMeasure(const MeasureOptions& options);

} // namespace tool
