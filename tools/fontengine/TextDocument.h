#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <dxf/Drawing.h>
#include <dxf/Placement.h>
#include <mtext/MText.h>
#include <render/RichTextDocument.h>

#include "FontMap.h"

namespace tool {

// A drawing's text as the library wants it, and what of it could not be said.
struct TextDocument {
    render::CRichTextDocument document;
    std::vector<mtext::ParagraphFormat> formats; // one per paragraph
    std::vector<mtext::Diagnostic> diagnostics;
};

// Reads the content of one text with its style, colour, height and alignment.
// Families are those that the font map gives. `color` (ARGB) stands for the
// text's own colour instead of the one that the drawing gives it.
TextDocument makeTextDocument(const dxf::Drawing& drawing, const dxf::PlacedText& placed, FontMap& fontMap,
                              std::optional<std::uint32_t> color = std::nullopt);

} // namespace tool
