#pragma once

#include <optional>
#include <string>

#include "InputError.h"

namespace tool {

struct MeasureOptions {
    std::string text; // UTF-8
    std::string font = "DejaVu Sans";
    double capSize = 1.0;
    std::optional<std::string> fontMap;
    bool bold = false;
    bool italic = false;
    bool json = false;
};

// Prints the boxes, the baseline and the metrics of the font of one line of text,
// and which families draw it. Fonts are replaced as in drawings.
ExitCode runMeasure(const MeasureOptions& options);

} // namespace tool
