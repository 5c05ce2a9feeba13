#pragma once

#include <vector>

#include "format/ParagraphSettings.h"
#include "lines/LineBreaker.h"
#include "shaping/ShapedText.h"

namespace platform {

/// Gives every line the height and baseline that its fonts and inline objects ask for, under the line spacing of
/// `settings`. A line without text is as high as text of `emptySize` in `emptyFace`.
void setLineHeights(const ShapedText& shaped, const ParagraphSettings& settings, CFontFace& emptyFace, float emptySize,
                    std::vector<Line>& lines);

} // namespace platform
