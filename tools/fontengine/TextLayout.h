#pragma once

#include <vector>

#include <dxf/Placement.h>
#include <geometry/MbRect.h>

#include "LaidOutParagraph.h"
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
    // Lines: what is measured. All: also what is drawn, and clusters in mode Clusters. (A paragraph of text of
    // different heights keeps its runs in any case.)
    fonts::EParagraphDetail detail = fonts::EParagraphDetail::All;
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
