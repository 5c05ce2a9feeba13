#pragma once

#include <algorithm>
#include <array>

namespace platform {

/// The symbols of dimensions, hole callouts and geometric tolerances that drawings have to themselves, in ascending
/// order: depth; diameter, profiles of a line and a surface; position; cylindricity to counterbore and countersink;
/// straightness and flatness; the circled capitals of modifiers and grid axes. Symbols that other texts use as often
/// (circles, squares, angles, arrows) are not among them.
inline constexpr auto drawingSymbols = [] {
    struct Range {
        char32_t first;
        char32_t last;
    };
    constexpr std::array<Range, 7> ranges = {{{0x21A7, 0x21A7},
                                              {0x2300, 0x2300},
                                              {0x2312, 0x2313},
                                              {0x2316, 0x2316},
                                              {0x232D, 0x2335},
                                              {0x23E4, 0x23E5},
                                              {0x24B6, 0x24CF}}};
    std::array<char32_t, 42> symbols{};
    std::size_t count = 0;
    for (const Range& range : ranges) {
        for (char32_t symbol = range.first; symbol <= range.last; ++symbol) {
            symbols.at(count++) = symbol;
        }
    }
    return symbols;
}();

constexpr bool isDrawingSymbol(char32_t character) {
    return std::binary_search(drawingSymbols.begin(), drawingSymbols.end(), character);
}

} // namespace platform
