#pragma once

#include <array>
#include <atomic>
#include <bitset>

namespace platform {

/// Characters of the basic plane that are a grapheme of their own between two of their kind: letters, ideographs,
/// spaces, composed syllables; no marks, controls, joiners, jamo, pictographs or surrogates.
///
/// Most text consists of them, and what is in one page of 256 is asked of ICU only once. Any number of threads may ask.
class SimpleCharacters {
public:
    static bool contains(char16_t unit) {
        const Page* page = s_pages[unit >> 8].load(std::memory_order_acquire);
        if (page == nullptr) {
            page = &fill(static_cast<unsigned>(unit >> 8));
        }
        return (*page)[unit & 0xFFU];
    }

private:
    using Page = std::bitset<256>;

    static const Page& fill(unsigned index);

    static std::array<std::atomic<const Page*>, 256> s_pages;
};

} // namespace platform
