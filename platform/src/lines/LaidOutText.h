#pragma once

#include <optional>
#include <vector>

#include "format/FormatSettings.h"
#include "format/RangeProperties.h"
#include "lines/LineBreaker.h"
#include "lines/LinePlacement.h"
#include "shaping/BreakOpportunities.h"
#include "shaping/ShapedText.h"
#include "unicode/TextBuffer.h"

namespace platform {

/// What a caller says of a text in a box.
struct LayoutInput {
    TextBuffer text;
    /// The paragraph settings, and the font that the text had at first.
    FormatSettings format;
    RangeProperties styles;
    Box box;
};

/// A text laid out in its box: all that a question about a layout is answered from. TextPipeline makes it, everybody
/// else reads it. It holds until the input changes, which it refers to.
struct LaidOutText {
    explicit LaidOutText(const LayoutInput& from) noexcept : input(from) {}

    const LayoutInput& input;
    /// The text without regard to lines. The widths of tabs and soft hyphens are as lines left them.
    ShapedText unbroken;
    /// The text with the shapes that line breaks changed; empty if they changed none.
    ShapedText reshaped;
    std::vector<Line> lines;
    PlacedLines placement;
    /// Where lines may end. Found for those who need it: see TextPipeline.
    std::optional<BreakOpportunities> opportunities;

    /// The text as lines break it.
    [[nodiscard]] const ShapedText& shaped() const noexcept { return reshaped.clusters.empty() ? unbroken : reshaped; }

    [[nodiscard]] const TextBuffer& text() const noexcept { return input.text; }
    [[nodiscard]] const ParagraphSettings& settings() const noexcept { return input.format.paragraph; }
    [[nodiscard]] const RangeProperties& styles() const noexcept { return input.styles; }
    [[nodiscard]] const Box& box() const noexcept { return input.box; }
};

} // namespace platform
