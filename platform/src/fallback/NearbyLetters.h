#pragma once

#include <cstddef>
#include <string_view>

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

    /// Up to where all that the base lacks goes to one and the same font anyway; known after a question only.
    std::size_t agreedUntil() const { return m_agreed ? m_end : 0; }

private:
    bool baseHas(char32_t character) const;
    void look(std::size_t position, const FallbackOrder& order);
    CFont* fontOfScript(UScriptCode script, const FallbackOrder& order);
    CFont* fontOfLetter(char32_t letter, std::size_t position, const FallbackOrder& order);

    const std::u16string_view m_text;
    CFont* const m_base;
    // The letters last looked at: [m_begin, m_end) around a place.
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    bool m_agreed = false;
    // The font last found among them; the script is invalid as long as none was looked for.
    UScriptCode m_script = USCRIPT_INVALID_CODE;
    CFont* m_font = nullptr;
};

} // namespace platform
