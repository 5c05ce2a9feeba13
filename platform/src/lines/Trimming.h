#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "format/ParagraphSettings.h"
#include "lines/LineBreaker.h"
#include "shaping/ShapedText.h"

namespace platform {

/// Cuts the lines that are wider than a box `maxWidth` wide, if `settings` asks for it: hides the clusters that do not
/// fit together with the trimming sign, and gives such lines the width that they then have. A box of no width sets no
/// limit.
void trimLines(std::u16string_view text, const ShapedText& shaped, const ParagraphSettings& settings, float maxWidth,
               const std::function<const BreakOpportunities&()>& opportunities, std::vector<Line>& lines);

} // namespace platform
