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

/// Whether a character of this class can belong to the grapheme before it.
bool canContinue(UGraphemeClusterBreak kind) {
    switch (kind) {
    case U_GCB_OTHER:
    case U_GCB_CONTROL:
    case U_GCB_CR:
    case U_GCB_L:
    case U_GCB_LV:
    case U_GCB_LVT:
    case U_GCB_PREPEND:
        return false;
    default:
        return true;
    }
}

/// Whether the grapheme of a character of this class can go on with a character that usually starts one.
bool canBeContinued(UGraphemeClusterBreak kind) {
    switch (kind) {
    case U_GCB_PREPEND:
    case U_GCB_ZWJ:
    case U_GCB_L:
    case U_GCB_CR:
        return true;
    default:
        return false;
    }
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
    if (!canContinue(classOf(after)) && !canBeContinued(classOf(before))) {
        return true;
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
