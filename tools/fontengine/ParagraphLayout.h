#pragma once

#include <render/RichTextDocument.h>

#include "TextLayout.h"

namespace tool {

// Lays out the document's first paragraph between two edges, its top at 0.
// Lengths are the document's units.
LaidOutParagraph layOutParagraph(Session& session, const render::CRichTextDocument& document, double left, double right,
                                 const TextLayoutOptions& options);

// Moves everything that stands in the text's frame.
void move(LaidOutParagraph& paragraph, double dx, double dy);

// Multiplies all lengths.
void scale(LaidOutParagraph& paragraph, double factor);

} // namespace tool
