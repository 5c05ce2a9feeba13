#pragma once

#include <string>
#include <vector>

#include <dxf/Placement.h>
#include <geometry/MbRect.h>

#include "Outlines.h"
#include "Session.h"
#include "TextDocument.h"

namespace tool {

struct LaidOutParagraph {
    std::wstring text;
    MbRect box;         // layout box, in the text's frame
    MbRect ink;         // ink box, in the text's frame; empty without ink
    MbCartPoint origin; // where `painted` stands in the text's frame
    PaintedParagraph painted;
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
};

// Lays one text out where it stands. Paragraph texts wrap at their width; a
// width of 0 sets no limit. Capitals of the first line reach up to the insertion
// point of a top attachment, the last baseline stands on that of a bottom one.
// `alignByInk` aligns the paragraphs' ink rather than their boxes.
LaidOutText layOutText(Session& session, const dxf::PlacedText& placed, const TextDocument& text, bool alignByInk);

} // namespace tool
