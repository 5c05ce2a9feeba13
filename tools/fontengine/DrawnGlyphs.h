#pragma once

#include <cstdint>
#include <vector>

#include <dxf/Geometry.h>

#include "TextLayout.h"

namespace tool {

// A glyph that leaves ink, where it stands.
struct DrawnGlyph {
    std::uint32_t face = 0; // its number in the session
    std::uint16_t index = 0;
    dxf::Point place;

    // The same picture, wherever it stands.
    [[nodiscard]] bool looksLike(const DrawnGlyph& other) const { return face == other.face && index == other.index; }
};

// The glyphs of one cluster, in the text's frame. `faces`: the numbers of the faces of the paragraph's layout.
std::vector<DrawnGlyph> glyphsOf(const LaidOutParagraph& paragraph, const LaidOutCluster& cluster,
                                 const std::vector<std::uint32_t>& faces);

// All glyphs of a text, in the drawing, in the order of drawing.
std::vector<DrawnGlyph> glyphsOf(const LaidOutText& text, FaceNumbers& faces);

} // namespace tool
