#include "unicode/Graphemes.h"

#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "unicode/BreakIterator.h"

namespace platform {

namespace {

/// Below this, every character but CR LF stands for itself.
constexpr char16_t firstComplexUnit = 0x300;

enum class GraphemeClass : std::uint8_t {
    Other,
    CR,
    LF,
    Control,
    Extend,
    SpacingMark,
    ZWJ,
    Prepend,
    RegionalIndicator,
    L,
    V,
    T,
    LV,
    LVT,
    ConjunctConsonant
};

#include "unicode/GraphemeClasses.inc"

GraphemeClass classOf(UChar32 character) {
    constexpr UChar32 blockSize = sizeof(graphemeBlocks[0]);
    return static_cast<GraphemeClass>(graphemeBlocks[graphemeBlockOf[character / blockSize]][character % blockSize]);
}

bool isControl(GraphemeClass kind) {
    return kind == GraphemeClass::CR || kind == GraphemeClass::LF || kind == GraphemeClass::Control;
}

/// Whether jamo and syllables of these classes belong to one syllable.
bool makeSyllable(GraphemeClass before, GraphemeClass after) {
    using enum GraphemeClass;
    switch (after) {
    case L:
    case LV:
    case LVT:
        return before == L;
    case V:
        return before == L || before == V || before == LV;
    case T:
        return before == V || before == LV || before == LVT || before == T;
    default:
        return false;
    }
}

enum class Verdict { Boundary, Inside, Unknown };

/// What the classes of two neighbours say. Emoji sequences, flags and conjuncts depend on more than that.
Verdict judge(GraphemeClass before, GraphemeClass after) {
    using enum GraphemeClass;
    if (isControl(before) || isControl(after)) {
        return before == CR && after == LF ? Verdict::Inside : Verdict::Boundary;
    }
    if (after == Extend || after == SpacingMark || after == ZWJ || before == Prepend || makeSyllable(before, after)) {
        return Verdict::Inside;
    }
    const bool maybeConjunct = after == ConjunctConsonant && before == Extend;
    return maybeConjunct || before == ZWJ || before == RegionalIndicator ? Verdict::Unknown : Verdict::Boundary;
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
        m_iterator = breakIterator(graphemeRules, m_text);
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
