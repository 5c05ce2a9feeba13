#pragma once

#include <dxf/Limits.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace dxf {

/// Bytes that a text of so many UTF-16 units may take in a file at most: UTF-8 needs three for a unit.
inline std::size_t mostBytesOf(std::size_t textLength) {
    constexpr std::size_t bytesPerUnit = 3;
    return textLength > Limits::none / bytesPerUnit ? Limits::none : bytesPerUnit * textLength;
}

/// Throws Error (TextLengthLimit) for the text at that line. `block`: where it stands, empty outside blocks.
[[noreturn]] void failAtTextLength(std::uint64_t line, const std::wstring& block, std::size_t limit);

} // namespace dxf
