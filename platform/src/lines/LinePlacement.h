#pragma once

#include <string_view>
#include <vector>

#include "format/ParagraphSettings.h"
#include "lines/LineBreaker.h"
#include "shaping/ShapedText.h"

namespace platform {

/// Where a line stands in the layout's box, and what justification adds to it.
struct PlacedLine {
    /// Of the line's text without the whitespace at its end.
    float left = 0.0F;
    float top = 0.0F;
    /// The line's width as placed, stretched or not.
    float width = 0.0F;
    /// Added after every cluster that a justified line is stretched at; 0 for most lines.
    float gap = 0.0F;
    bool gapsAreSpaces = true;
    /// Where stretching begins: behind the last tab.
    UINT32 gapBegin = 0;
    /// How far the line's first advance starts before `left`.
    float bearing = 0.0F;
};

/// The room without ink at both ends of a line; negative where ink stands out.
struct SideBearings {
    float left = 0.0F;
    float right = 0.0F;
};

/// The layout's box.
struct Box {
    float width = 0.0F;
    float height = 0.0F;
};

/// All lines in the box. `lines` belong to `shaped`.
struct Placement {
    std::vector<PlacedLine> lines;
    /// Of the widest line, as placed.
    float left = 0.0F;
    float top = 0.0F;
    float width = 0.0F;
    float fullWidth = 0.0F;
    float height = 0.0F;
};

/// Aligns and justifies lines that are broken already. What `bearings` say of the lines, if they say something, does
/// not count as theirs.
void placeLines(std::u16string_view text, const ShapedText& shaped, const std::vector<Line>& lines,
                const ParagraphSettings& settings, const Box& box, const std::vector<SideBearings>& bearings,
                Placement& placement);

/// What justification adds to the width of `cluster` on its line.
float stretchOf(std::u16string_view text, const ShapedText& shaped, const Line& line, const PlacedLine& placed,
                UINT32 cluster);

} // namespace platform
