#pragma once

#include <vector>

#include <dwrite.h>

namespace fuzz {

/// What a layout answers about its text.
struct Answers {
    bool succeeded = false; ///< False: the layout refuses, as with an inline object without a size.
    DWRITE_TEXT_METRICS metrics{};
    DWRITE_OVERHANG_METRICS overhangs{};
    std::vector<DWRITE_CLUSTER_METRICS> clusters;
    std::vector<DWRITE_LINE_METRICS> lines;
    FLOAT minWidth = 0.0F;

    /// Equal to the last bit, numbers that are none included.
    friend bool operator==(const Answers& left, const Answers& right);
};

/// Asks everything but where things are hit and drawn.
Answers ask(IDWriteTextLayout& layout);

/// Draws the layout and expects of every run that its glyphs are its font's.
void draw(IDWriteTextLayout& layout);

} // namespace fuzz
