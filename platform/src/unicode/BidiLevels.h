#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <dwrite.h>

namespace platform {

/// The level that lines have by themselves: 0 where they are read from left to right, else 1.
constexpr std::uint8_t paragraphLevel(bool rightToLeft) noexcept {
    return rightToLeft ? 1 : 0;
}

/// Finds the bidi level of every unit of `text`, with the paragraphs' level given and never guessed from the text.
///
/// Returns false, with `levels` empty, if every unit is at the paragraph's level; this is found out without asking the
/// bidi algorithm for text that reads from left to right throughout.
bool findBidiLevels(std::u16string_view text, bool rightToLeft, std::vector<std::uint8_t>& levels);

/// For runs of one line with these levels, in the order of the text: the runs' indices from left to right.
void findVisualOrder(const std::vector<std::uint8_t>& levels, std::vector<std::int32_t>& order);

} // namespace platform
