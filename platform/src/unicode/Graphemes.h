#pragma once

#include <cstddef>
#include <string_view>

#include <unicode/ubrk.h>

namespace platform {

/// Tells where one user-perceived character of a text ends and the next begins. A thread uses one of these at a time.
class Graphemes {
public:
    explicit Graphemes(std::u16string_view text) : m_text(text) {}

    /// Whether a grapheme starts at `position`, which lies within the text.
    bool isBoundary(std::size_t position);

private:
    std::u16string_view m_text;
    /// Set at the first position that the properties of its neighbours do not decide.
    UBreakIterator* m_iterator = nullptr;
};

/// Whether nothing is ever drawn for `character` by itself: joiners, selectors, marks of direction, the soft hyphen...
bool isIgnorable(UChar32 character);

/// Whether every character of `text` is ignorable.
bool isIgnorable(std::u16string_view text);

} // namespace platform
