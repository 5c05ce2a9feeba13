#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <geometry/MbCartPoint.h>
#include <geometry/MbRect.h>
#include <render/RichTextDocument.h>

namespace fonts {

// One glyph run of a laid-out paragraph: characters of one token on one line,
// set in one font and one direction.
//
// Lengths are the document's units (the unit of SRichTextToken::fontCapSize).
// The frame has its origin at the top-left corner of the paragraph's layout
// box, x to the right and y up, so text lies at y <= 0.
//
// A plain value: it owns all it holds and refers to no platform object.
struct SGlyphRunDesc {
    // The run's characters, UTF-16 units in reading order.
    std::wstring text;
    // Position of the run's first character in the paragraph's concatenated
    // text, in UTF-16 units.
    uint32_t textPosition = 0;
    // Tight bounds of the run's glyph outlines; the empty rectangle for a run
    // without ink (spaces, tabs, newlines).
    MbRect bounds;
    // Where the run's baseline starts: its left end in a left-to-right run, its
    // right end in a right-to-left one.
    MbCartPoint baselineOrigin;
    // The token the run comes from, with its text replaced by the run's own.
    render::SRichTextToken token;
    // One origin per glyph, in the order of the glyphs (reading order), with the
    // offsets that the shaper gave to single glyphs (marks). They go from the
    // baseline origin to the right by the advances in every run: in a right-to-left
    // run too, whose outlines stand to the left of its baseline origin.
    std::vector<MbCartPoint> glyphOrigins;
    // One entry per character of `text`: the index in `glyphOrigins` of the
    // first glyph of the cluster that the character belongs to. Never decreases.
    // A run without glyphs has entries too (0, 1, 2, ...); they index nothing.
    std::vector<uint32_t> clusterMap;
};

} // namespace fonts
