#include "unicode/BidiBrackets.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace platform {

namespace {

constexpr std::size_t mostOpen = 63;
/// A neutral character that is no bracket.
constexpr char16_t neutral = u'\uFFFC';

UBidiPairedBracketType bracketTypeOf(char16_t unit) {
    // The scripts that are read from right to left have no brackets of their own.
    constexpr char16_t firstBeyondAscii = 0x0F3A;
    if (unit >= 0x80 && unit < firstBeyondAscii) {
        return U_BPT_NONE;
    }
    return static_cast<UBidiPairedBracketType>(u_getIntPropertyValue(unit, UCHAR_BIDI_PAIRED_BRACKET_TYPE));
}

/// The closing bracket of a pair. The two kinds of angle brackets are equivalent.
UChar32 closingOf(char16_t opening) {
    constexpr char16_t technicalAngle = 0x2329;
    constexpr char16_t angle = 0x3009;
    return opening == technicalAngle ? angle : u_getBidiPairedBracket(opening);
}

UChar32 equivalentOf(char16_t closing) {
    return closing == 0x232A ? 0x3009 : closing;
}

/// Reads a text from its start and says of each bracket whether it may be paired. All brackets are of the basic plane.
class OpenBrackets {
public:
    /// Whether `unit` may stay.
    bool read(char16_t unit) {
        switch (u_charDirection(unit)) {
        case U_BLOCK_SEPARATOR:
            *this = OpenBrackets();
            return true;
        case U_LEFT_TO_RIGHT_ISOLATE:
        case U_RIGHT_TO_LEFT_ISOLATE:
        case U_FIRST_STRONG_ISOLATE:
            m_isolates.push_back(m_open.size());
            return true;
        case U_POP_DIRECTIONAL_ISOLATE:
            // What is open in an isolate is never closed, but it goes on counting: ICU keeps it where isolates are
            // nested too deeply.
            if (!m_isolates.empty()) {
                m_lost += m_open.size() - m_isolates.back();
                m_open.resize(m_isolates.back());
                m_isolates.pop_back();
            }
            return true;
        case U_OTHER_NEUTRAL:
            return readNeutral(unit);
        default:
            return true;
        }
    }

private:
    bool readNeutral(char16_t unit) {
        switch (bracketTypeOf(unit)) {
        case U_BPT_OPEN:
            m_isFull = m_isFull || m_open.size() + m_lost == mostOpen;
            if (!m_isFull) {
                m_open.push_back(closingOf(unit));
            }
            return !m_isFull;
        case U_BPT_CLOSE:
            if (!m_isFull) {
                close(equivalentOf(unit));
            }
            return !m_isFull;
        default:
            return true;
        }
    }

    void close(UChar32 closing) {
        const std::size_t first = m_isolates.empty() ? 0 : m_isolates.back();
        for (std::size_t i = m_open.size(); i > first; --i) {
            if (m_open[i - 1] == closing) {
                m_open.resize(i - 1);
                return;
            }
        }
    }

    /// What would close each open bracket.
    std::vector<UChar32> m_open;
    /// How many were open where each isolate began.
    std::vector<std::size_t> m_isolates;
    std::size_t m_lost = 0;
    bool m_isFull = false;
};

} // namespace

std::u16string withoutUnpairedBrackets(std::u16string_view text) {
    std::u16string substituted;
    const auto isOpening = [](char16_t unit) { return bracketTypeOf(unit) == U_BPT_OPEN; };
    if (static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isOpening)) <= mostOpen) {
        return substituted;
    }
    OpenBrackets brackets;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!brackets.read(text[i])) {
            if (substituted.empty()) {
                substituted = text;
            }
            substituted[i] = neutral;
        }
    }
    return substituted;
}

} // namespace platform
