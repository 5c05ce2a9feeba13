#pragma once

#include <string>
#include <vector>

#include "DrawingLayout.h"
#include "FontMap.h"

namespace tool {

// Writes everything that was measured, one object per drawing. Lengths are
// drawing units; rectangles are [xmin, ymin, xmax, ymax] in the text's frame
// (origin at its box's top-left corner, y up) or null where there is no ink;
// "clusters" and "underlines" are there in mode clusters;
// "toDrawing" is the affine map [a, b, c, d, e, f] from there to the drawing:
// x' = a x + c y + e, y' = b x + d y + f. Throws InputError when the file cannot
// be written.
void writeJson(const std::string& path, const std::vector<LaidOutDrawing>& drawings,
               const std::vector<FontMap::Replacement>& replacements);

} // namespace tool
