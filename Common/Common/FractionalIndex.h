#pragma once

#include "FontEngineExport.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace common {

/// The place of an item among others: the base-256 fraction 0.d1 d2 d3 ... of its digits. An item moves between two
/// others by taking an index between theirs; nothing else is renumbered.
class FONTENGINE_API CFractionalIndex {
public:
    /// The middle of the range: one digit, 0x80.
    CFractionalIndex();
    /// The fraction with these digits, most significant first; digitCount is their number.
    explicit CFractionalIndex(std::vector<std::uint8_t> digits) noexcept;
    CFractionalIndex(const CFractionalIndex&) = default;
    /// Takes the fields; `other` keeps no digits.
    CFractionalIndex(CFractionalIndex&& other) noexcept;
    CFractionalIndex& operator=(const CFractionalIndex&) = default;
    /// Takes the fields; `other` keeps no digits.
    CFractionalIndex& operator=(CFractionalIndex&& other) noexcept;
    virtual ~CFractionalIndex();

    /// The shared index without digits; less than every index that has some. Usable before main.
    [[nodiscard]] static const CFractionalIndex& empty() noexcept;
    /// The shared middle, as the default constructor makes it; built when the library is loaded.
    [[nodiscard]] static const CFractionalIndex& middle() noexcept;

    [[nodiscard]] std::uint64_t digitCount() const noexcept { return m_digitCount; }
    [[nodiscard]] const std::vector<std::uint8_t>& digits() const noexcept { return m_digits; }

    /// Compares the digits alone, as unsigned bytes from the first on; a proper prefix is less.
    friend bool operator<(const CFractionalIndex& left, const CFractionalIndex& right) noexcept {
        return std::lexicographical_compare(left.m_digits.begin(), left.m_digits.end(), right.m_digits.begin(),
                                            right.m_digits.end());
    }

private:
    struct EmptyTag {};
    explicit constexpr CFractionalIndex(EmptyTag) noexcept {}
    static const CFractionalIndex s_empty;
    static const CFractionalIndex s_middle;

    std::uint64_t m_digitCount = 0;
    std::vector<std::uint8_t> m_digits;
};

} // namespace common
