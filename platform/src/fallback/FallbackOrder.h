#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <unicode/uscript.h>

#include "fallback/FontconfigOrder.h"

namespace platform {

/// Whether a font has all of the characters.
bool covers(CFont& font, std::u32string_view characters);

/// The fonts of a collection in the order in which they stand in for others, and what was found out about characters.
///
/// A character goes to the first font that has it and is made for a language of its script, as Fontconfig knows fonts'
/// languages, so that a script is not scattered over fonts that have a few of its letters for other reasons; else to
/// the first that has it. The symbols of drawings go to the font that has most of them, so that a callout is drawn in
/// one font wherever its parts stand. Any number of threads may ask; asking again costs two loads. Takes at most 2.3
/// MB, once every code point of Unicode was asked.
class FallbackOrder {
public:
    /// Fonts of the current Fontconfig configuration that `collection`, which outlives the order, has.
    FallbackOrder(const CFontCollection& collection, const FallbackKey& key);
    ~FallbackOrder();

    /// The first font of all; null without fonts.
    CFont* first() const;
    /// The font for a character, in the key's weight and style as far as its family goes; null if none.
    CFont* fontFor(char32_t character) const;
    /// A font that has all the characters, of which there is at least one; null if none.
    CFont* fontForAll(std::u32string_view characters) const;
    /// The font that has most of the characters: of those made for a language of the first one's script if any such
    /// font has one of them, else of all; the first one where several have as many. Null if none has any.
    CFont* fontForMost(const std::u32string& characters) const;
    /// Whether all letters of a script that any font has are drawn by one and the same, as far as Fontconfig's lists
    /// say.
    bool drawsInOneFont(UScriptCode script) const;
    /// A colour font that has all the characters, `preferred` if that is one; null if none.
    CFont* emojiFontForAll(std::u32string_view characters, const CFont* preferred) const;

private:
    struct Entry {
        ListedFont listed;
        // The member of the font's family that fits the key best.
        CFont* fitting;
    };
    // For each entry whether it is made for the script's language.
    using Preference = std::vector<bool>;
    using Page = std::array<std::atomic<std::uint16_t>, 256>;
    enum class Answer : unsigned char { Unknown, No, Yes };

    CFont* resolve(std::uint16_t place) const;
    bool findWhetherOneFontDraws(UScriptCode script) const;
    std::uint16_t bestPlaceFor(std::u32string_view characters) const;
    std::uint16_t placeIn(std::size_t entry, std::u32string_view characters) const;
    std::uint16_t find(std::u32string_view characters) const;
    // The first of those that have most of the symbols of drawings.
    std::size_t entryOfDrawings() const;
    const Preference& preferenceFor(UScriptCode script) const;
    Page& pageOf(char32_t character) const;

    std::string m_language;
    std::vector<Entry> m_entries;
    mutable std::array<std::atomic<Page*>, 0x1100> m_pages{};
    mutable std::array<std::atomic<Answer>, 256> m_scriptsOfOneFont{};
    // Guards what is below.
    mutable std::mutex m_guard;
    mutable std::optional<std::size_t> m_entryOfDrawings;
    mutable std::unordered_map<int, Preference> m_preferences;
    mutable std::unordered_map<std::u32string, std::uint16_t> m_sequences;
    mutable std::unordered_map<std::u32string, std::uint16_t> m_sets;
};

} // namespace platform
