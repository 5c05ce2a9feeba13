#pragma once

#include <cstddef>
#include <string_view>

#include <boost/container/small_vector.hpp>
#include <unicode/uscript.h>

namespace platform {

class CFont;
class FallbackOrder;

/// What a base font lacks of the letters around a place, so that all of it can go to one font.
///
/// Taken one by one, the letters of a language that the first choice has only in part would be scattered over two
/// fonts, and in scripts whose letters join they would no longer do so.
class NearbyLetters {
public:
    /// How far on either side, in UTF-16 units, letters count. Those of other lines do not.
    static constexpr std::size_t reach = 64;

    /// `base` may be null only where no font is installed.
    NearbyLetters(std::u16string_view text, CFont* base) : m_text(text), m_base(base) {}

    /// The font for the characters of a cluster at `position` that the base lacks: the one that has most of what the
    /// base lacks of their script nearby, if it has the cluster; else the first that has it. Null if none has.
    CFont* fontFor(std::u32string_view characters, std::size_t position, const FallbackOrder& order);

    /// The font of the closest letter before a position, then of the closest one after it; null for a letter that the
    /// base draws.
    CFont* fontBefore(std::size_t position, const FallbackOrder& order);
    CFont* fontAfter(std::size_t position, const FallbackOrder& order);

    /// Whether it is clear without looking around that a character at `position`, where no common one stands, goes to
    /// the font that comes first for it.
    bool isClear(char32_t character, std::size_t position, const FallbackOrder& order) const;

private:
    struct ScriptFont {
        UScriptCode script;
        CFont* font;
        // Whether all the letters go to the font; else the one that has most of them is still to be found.
        bool isAgreed;
    };

    bool baseHas(char32_t character) const;
    void look(std::size_t position, const FallbackOrder& order);
    void note(UScriptCode script, CFont* font);
    CFont* fontOfScript(UScriptCode script, const FallbackOrder& order);
    CFont* fontOfLetter(char32_t letter, std::size_t position, const FallbackOrder& order);

    const std::u16string_view m_text;
    CFont* const m_base;
    // The letters last looked at: [m_begin, m_end) around a place.
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    bool m_agreed = false;
    boost::container::small_vector<ScriptFont, 4> m_scripts;
};

} // namespace platform
