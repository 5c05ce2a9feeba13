#include "layout/Graphemes.h"

#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "layout/BreakIterator.h"

namespace platform {

namespace {

/// Below this, every character but CR LF stands for itself.
constexpr char16_t firstComplexUnit = 0x300;

UGraphemeClusterBreak classOf(UChar32 character) {
    return static_cast<UGraphemeClusterBreak>(u_getIntPropertyValue(character, UCHAR_GRAPHEME_CLUSTER_BREAK));
}

bool isControl(UGraphemeClusterBreak kind) {
    return kind == U_GCB_CR || kind == U_GCB_LF || kind == U_GCB_CONTROL;
}

/// Whether jamo and syllables of these classes belong to one syllable.
bool makeSyllable(UGraphemeClusterBreak before, UGraphemeClusterBreak after) {
    switch (after) {
    case U_GCB_L:
    case U_GCB_LV:
    case U_GCB_LVT:
        return before == U_GCB_L;
    case U_GCB_V:
        return before == U_GCB_L || before == U_GCB_V || before == U_GCB_LV;
    case U_GCB_T:
        return before == U_GCB_V || before == U_GCB_LV || before == U_GCB_LVT || before == U_GCB_T;
    default:
        return false;
    }
}

enum class Verdict { Boundary, Inside, Unknown };

/// What the classes of two neighbours say. Emoji sequences and flags depend on more than that.
Verdict judge(UGraphemeClusterBreak before, UGraphemeClusterBreak after) {
    if (isControl(before) || isControl(after)) {
        return before == U_GCB_CR && after == U_GCB_LF ? Verdict::Inside : Verdict::Boundary;
    }
    if (after == U_GCB_EXTEND || after == U_GCB_SPACING_MARK || after == U_GCB_ZWJ || before == U_GCB_PREPEND ||
        makeSyllable(before, after)) {
        return Verdict::Inside;
    }
    return before == U_GCB_ZWJ || before == U_GCB_REGIONAL_INDICATOR ? Verdict::Unknown : Verdict::Boundary;
}

} // namespace

bool Graphemes::isBoundary(std::size_t position) {
    if (position == 0) {
        return true;
    }
    if (m_text[position] < firstComplexUnit && m_text[position - 1] < firstComplexUnit) {
        return m_text[position] != u'\n' || m_text[position - 1] != u'\r';
    }
    if (U16_IS_TRAIL(m_text[position]) && U16_IS_LEAD(m_text[position - 1])) {
        return false;
    }
    UChar32 after = 0;
    U16_GET(m_text.data(), 0, position, m_text.size(), after);
    UChar32 before = 0;
    U16_GET(m_text.data(), 0, position - 1, m_text.size(), before);
    if (const Verdict verdict = judge(classOf(before), classOf(after)); verdict != Verdict::Unknown) {
        return verdict == Verdict::Boundary;
    }
    if (m_iterator == nullptr) {
        m_iterator = breakIterator(UBRK_CHARACTER, m_text);
    }
    return ubrk_isBoundary(m_iterator, static_cast<std::int32_t>(position)) != 0;
}

bool isIgnorable(UChar32 character) {
    return u_hasBinaryProperty(character, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0;
}

bool isIgnorable(std::u16string_view text) {
    for (std::size_t position = 0; position < text.size();) {
        UChar32 character = 0;
        U16_NEXT(text.data(), position, text.size(), character);
        if (!isIgnorable(character)) {
            return false;
        }
    }
    return true;
}

} // namespace platform
