#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <dwrite_2.h>
#include <fontconfig/fontconfig.h>

#include "fallback/FontconfigPointers.h"

namespace platform {

class CFont;
class CFontCollection;

/// What an order of fallback depends on. The language is Fontconfig's name of it, empty for the user's own.
struct FallbackKey {
    std::string language;
    DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL;
    DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL;
    DWRITE_FONT_STRETCH stretch = DWRITE_FONT_STRETCH_NORMAL;

    bool operator==(const FallbackKey&) const = default;
};

/// The fonts of a collection in the order in which they stand in for others, and what was found out about characters.
///
/// The order is Fontconfig's for a sans serif of the key's language, weight and style; where Fontconfig has no opinion,
/// plain sans faces come before the others. Any number of threads may ask; asking again costs two loads. Takes at
/// most 2.3 MB, once every code point of Unicode was asked.
class FallbackOrder {
public:
    /// Fonts of the current Fontconfig configuration that `collection`, which outlives the order, has.
    FallbackOrder(const CFontCollection& collection, const FallbackKey& key);
    ~FallbackOrder();

    /// The first font of all; null without fonts.
    CFont* first() const;
    /// The first font that has the character, in the key's weight and style as far as its family goes; null if none.
    CFont* fontFor(char32_t character) const;
    /// The first font that has all the characters, of which there is at least one; null if none.
    CFont* fontForAll(std::u32string_view characters) const;

private:
    struct Entry {
        const FcCharSet* coverage;
        // The member of the font's family that fits the key best, and the font itself.
        CFont* fitting;
        CFont* own;
    };
    using Page = std::array<std::atomic<std::uint16_t>, 256>;

    CFont* resolve(std::uint16_t place) const;
    std::uint16_t find(std::u32string_view characters) const;
    Page& pageOf(char32_t character) const;

    // Owns the coverages.
    FontSetPtr m_sorted;
    std::vector<Entry> m_entries;
    mutable std::array<std::atomic<Page*>, 0x1100> m_pages{};
    mutable std::mutex m_sequencesGuard;
    mutable std::unordered_map<std::u32string, std::uint16_t> m_sequences;
};

} // namespace platform
