#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string_view>
#include <vector>

#include "format/RangeProperties.h"
#include "shaping/BreakOpportunities.h"
#include "shaping/ShapedText.h"

namespace platform {

/// A line, in clusters. Lengths are in the layout's units.
struct Line {
    UINT32 clusterBegin = 0;
    UINT32 clusterEnd = 0;
    /// The first cluster of the whitespace at the line's end, the newline included.
    UINT32 trailingBegin = 0;
    /// Text positions.
    UINT32 newlineLength = 0;
    /// Without and with the whitespace at the end.
    float width = 0.0F;
    float fullWidth = 0.0F;
    float height = 0.0F;
    /// From the line's top down to its baseline.
    float baseline = 0.0F;
    /// The line ends because the text does, or a paragraph of it.
    bool endsParagraph = false;
    /// The line breaks after a soft hyphen, its last cluster before whitespace, which shows.
    bool showsHyphen = false;
    /// The line was cut to its box: the sign for trimmed text stands where these clusters would.
    bool isTrimmed = false;
    UINT32 trimBegin = 0;
    UINT32 trimEnd = 0;
    float signWidth = 0.0F;
};

/// What line breaking depends on besides the shaped text.
struct LineBreakSettings {
    /// Lines are not limited at 0, at infinity and where it is not a number.
    float maxWidth = 0.0F;
    DWRITE_WORD_WRAPPING wrapping = DWRITE_WORD_WRAPPING_WRAP;
    float tabStop = 0.0F;
    /// The line with this number is not wrapped.
    std::size_t unwrappedLine = std::numeric_limits<std::size_t>::max();
};

/// Cuts `shaped` into lines: all that a line consists of but its height.
///
/// `opportunities` is asked only if some line is too wide. The widths of tabs and of hyphens that show depend on where
/// lines start and end, so they are written into `shaped`. Where a break changes the shapes next to it, `reshaped`
/// becomes a copy of `shaped` with the new shapes and the lines are counted in its clusters; otherwise it is left
/// empty.
void breakLines(std::u16string_view text, const RangeProperties& styles, ShapedText& shaped,
                const LineBreakSettings& settings, const std::function<const BreakOpportunities&()>& opportunities,
                std::vector<Line>& lines, ShapedText& reshaped);

/// How far a tab at `x` from a line's start reaches.
float tabWidth(float x, float tabStop) noexcept;

} // namespace platform
