#pragma once

#include "FontEngineExport.h"

#include <cstdint>
#include <cstring>

namespace common {

/// The identity of something whose order and content may change: 16 bytes, laid out as the platform's UUID structure.
/// A default-constructed one is nil (all zeros).
struct UUID {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::uint8_t data4[8] = {};

    /// A new random identifier from the platform's generator. Throws ECheckViolation when the generator reports
    /// anything but success, a merely machine-wide uniqueness included. Any thread may call it.
    [[nodiscard]] FONTENGINE_API static UUID create();

    friend bool operator==(const UUID&, const UUID&) noexcept = default;

    /// Orders by the 16 bytes as they lie in memory, each unsigned.
    friend bool operator<(const UUID& left, const UUID& right) noexcept {
        return std::memcmp(&left, &right, sizeof(UUID)) < 0;
    }
};

static_assert(sizeof(UUID) == 16 && alignof(UUID) == 4);

} // namespace common
