#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// The form in which names that differ only in letter case are equal.
std::wstring foldCase(std::wstring_view text);

/// Whether foldCase of `text` only has to lower the letters A to Z.
bool isAscii(std::wstring_view text) noexcept;

/// Hash and equality of folded names that take an unfolded ASCII name as it is, so that
/// the usual look-up needs no copy.
struct FoldedHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const noexcept;
};

struct FoldedEqual {
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const noexcept;
};

} // namespace platform
