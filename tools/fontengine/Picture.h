#pragma once

#include <string>
#include <vector>

#include "TextLayout.h"

namespace tool {

struct PictureOptions {
    // Draws paragraph boxes (blue), ink boxes (red) and baselines (green) too.
    bool boxes = false;
    // Length of the picture's longer side, in pixels or SVG units.
    double longerSide = 2400.0;
};

// Draw all texts of a drawing, fitted to the picture; texts laid out by clusters with
// the clusters' rectangles (violet), the corners where their texts are inserted (dots)
// and the bars of underlines (orange). Throw InputError when the
// file cannot be written.
void writePng(const std::string& path, const std::vector<LaidOutText>& texts, const PictureOptions& options);
void writeSvg(const std::string& path, const std::vector<LaidOutText>& texts, const PictureOptions& options);

} // namespace tool
