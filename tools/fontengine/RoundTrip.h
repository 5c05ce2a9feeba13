#pragma once

#include <cstddef>
#include <cstdint>

#include "Exploder.h"
#include "Session.h"

namespace tool {

// How an exploded drawing, read and laid out again, compares with the one it
// was made from.
struct RoundTrip {
    std::size_t glyphs = 0;        // compared
    std::size_t different = 0;     // missing, too many, or other glyphs
    double largestDeviation = 0.0; // of a glyph's place, in its cap heights
    std::uint64_t line = 0;        // of the text with the largest deviation, in the original

    // Below one percent of the cap height everywhere, and every glyph there.
    [[nodiscard]] bool holds() const { return different == 0 && largestDeviation < 0.01; }
};

// Lays the exploded drawing out as any other and compares glyph by glyph with what
// `exploder` remembers of `original`. Texts that stayed as they were are not compared.
RoundTrip checkRoundTrip(Session& session, const dxf::Drawing& exploded, const dxf::Drawing& original,
                         const Exploder& exploder);

} // namespace tool
