#pragma once

#include <dwrite.h>

#include <cstdint>
#include <vector>

#include <FontEngine/RichTextDocumentProcessor.h>
#include <geometry/MbCartPoint.h>
#include <geometry/MbRect.h>

namespace tool {

// Filled shapes to draw: closed contours of straight lines and cubic curves.
// y points up; the origin is whatever the maker's frame says.
struct Outline {
    enum class Verb : std::uint8_t { Move, Line, Curve, Close };

    std::vector<Verb> verbs;
    // One point for Move and Line, three for Curve, none for Close.
    std::vector<MbCartPoint> points;
};

// What one glyph run, or the bar under it, leaves on paper.
struct PaintedShape {
    Outline outline;
    std::uint32_t color = 0xFF000000; // ARGB
};

// A paragraph as drawn, in the frame of its own layout box (top-left corner at
// the origin, y up).
struct PaintedParagraph {
    std::vector<PaintedShape> shapes;
    std::vector<double> baselines; // y of each line, top to bottom
    std::size_t missingGlyphs = 0; // characters that no installed font has
};

// Draws the paragraph's layout, as it stands, into outlines. Throws
// oslayer::EOsLayerError when the platform fails.
PaintedParagraph paintParagraph(const fonts::SLayoutDesc& layout);

} // namespace tool
