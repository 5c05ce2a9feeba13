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

// What one glyph, or a bar under or through text, leaves on paper.
struct PaintedShape {
    Outline outline;
    std::uint32_t color = 0xFF000000; // ARGB
};

// Tells fonts apart by what any platform says of them: two with all of these
// alike hold the same glyphs for every practical purpose.
struct FaceKey {
    std::uint16_t glyphCount = 0;
    std::uint16_t unitsPerEm = 0;
    std::uint16_t ascent = 0;
    std::uint16_t capHeight = 0;
    int simulations = 0;

    friend bool operator==(const FaceKey&, const FaceKey&) = default;
};

struct PaintedGlyph {
    std::uint16_t index = 0;
    bool hasInk = false;
    MbCartPoint place;                // of its origin, as drawn
    std::uint32_t color = 0xFF000000; // ARGB; one run can hold text of several colours
    std::size_t shape = 0;            // of one with ink: in PaintedParagraph::shapes
};

// One glyph run as drawn. Lengths and frame are those of the paragraph.
struct PaintedRun {
    std::vector<std::uint16_t> clusterMap; // of its text, as the platform gives it
    std::vector<PaintedGlyph> glyphs;
    FaceKey face;
    bool rightToLeft = false;
    double left = 0.0;
    double right = 0.0;
    double baseline = 0.0;
};

// How much of a drawn paragraph is kept. A long text has millions of glyphs, and
// an outline is larger than all else that is known of one.
enum class PaintDetail : std::uint8_t {
    Lines,  // what is measured: no runs, no shapes
    Glyphs, // runs with their glyphs, and which of these leave ink
    Shapes, // outlines and bars too
};

// A paragraph as drawn, in the frame of its own layout box (top-left corner at
// the origin, y up).
struct PaintedParagraph {
    std::vector<PaintedShape> shapes;
    std::vector<PaintedRun> runs;  // in the order of drawing
    std::vector<std::size_t> bars; // the shapes that are bars, in the order of drawing
    std::vector<double> baselines; // y of each line, top to bottom
    double firstCapSize = 0.0;     // of the tallest capitals in the first line
    bool mixesHeights = false;     // a line holds ink of text of different heights
    bool hasBars = false;          // under or through text, kept or not
    std::vector<char32_t> missing; // characters that no installed font has
};

// Draws the paragraph's layout, as it stands, into outlines. Throws
// oslayer::EOsLayerError when the platform fails.
PaintedParagraph paintParagraph(const fonts::SLayoutDesc& layout, PaintDetail detail = PaintDetail::Shapes);

// Multiplies all lengths.
void scale(PaintedParagraph& paragraph, double factor);

} // namespace tool
