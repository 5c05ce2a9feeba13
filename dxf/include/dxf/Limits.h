#pragma once

#include <cstddef>
#include <limits>

namespace dxf {

/// What a drawing may ask for before it is refused. References to blocks multiply, and a few hundred bytes can ask for
/// more texts than any machine holds: `INSERT` in 32767 rows of 32767 columns, or blocks that each place the next ten
/// times. A drawing beyond a limit is an Error that names the limit and the block. Drawings made by people stay far
/// below the values given here; docs/limits.md says how far.
struct Limits {
    /// No limit.
    static constexpr std::size_t none = (std::numeric_limits<std::size_t>::max)();
    /// No drawing is followed deeper, whatever `depth` says: each level takes a part of the stack.
    static constexpr std::size_t deepest = 256;

    /// Blocks placed by references (a reference in rows and columns counts for each of them, one in a block for each
    /// place of that block) plus texts placed so, less one for each such reference and text in the file: what grows
    /// with the file needs no other limit. Blocks that show no text don't count.
    std::size_t placements = 500'000;
    /// References inside one another.
    std::size_t depth = 64;
    /// Characters of one text, codes included, in UTF-16 units.
    std::size_t textLength = 16'000'000;
    /// Characters of all texts placed by references, each text counted in each place.
    std::size_t placedLength = 20'000'000;
};

} // namespace dxf
