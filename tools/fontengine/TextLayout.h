#pragma once

#include <string>
#include <vector>

#include <dxf/Placement.h>
#include <geometry/MbRect.h>
#include <render/RichTextDocument.h>

#include "Outlines.h"
#include "Session.h"
#include "TextDocument.h"

namespace tool {

// Which of the library's layoutings places the paragraphs.
enum class LayoutMode {
    Document, // rectangles of the paragraphs, text in them
    MText,    // rectangles that a writer of MTEXT wants: aligned with the ink
    Clusters, // rectangles of the glyph clusters
};

struct TextLayoutOptions {
    LayoutMode mode = LayoutMode::Document;
    bool alignByInk = false; // Document: align the paragraphs' ink rather than their boxes
    PaintDetail detail = PaintDetail::Shapes;
};

// A glyph cluster as the library places it.
struct LaidOutCluster {
    render::SRichTextToken token; // its text is the cluster's
    MbRect rect;                  // in the text's frame; where nothing is drawn it means nothing
    // Its glyphs in the paragraph's `painted`.
    std::size_t run = 0;
    std::size_t firstGlyph = 0;
    std::size_t glyphCount = 0;
    bool hasInk = false;
};

struct LaidOutParagraph {
    std::wstring text;
    MbRect box;         // as the layouting says, in the text's frame; empty where it says nothing
    MbRect ink;         // ink box, in the text's frame; empty without ink
    MbCartPoint origin; // where `painted` stands in the text's frame
    double height = 0.0;
    PaintedParagraph painted;
    std::vector<LaidOutCluster> clusters; // in mode Clusters, unless only lines are wanted
    std::vector<MbRect> underlines;       // the same; in the text's frame
};

// One text of a drawing, laid out. Lengths are drawing units; the text's frame
// has its origin at the top-left corner of the text's box, y up.
struct LaidOutText {
    std::vector<LaidOutParagraph> paragraphs;
    MbRect box; // of all paragraphs
    MbRect ink; // of all paragraphs; empty without ink
    // What of the text stands at its insertion point, in the text's frame.
    MbCartPoint anchor;
    // From the text's frame to the drawing.
    dxf::Transform toDrawing;
    // False where lines inside a paragraph would have to stand otherwise.
    bool indentsExpressed = true;
    bool spacingExpressed = true;
};

// Lays one text out where it stands, by the rules of docs/drawing-placement.md.
LaidOutText layOutText(Session& session, const dxf::PlacedText& placed, const TextDocument& text,
                       const TextLayoutOptions& options);

} // namespace tool
