#include "unicode/TextBuffer.h"

#include <cstddef>

namespace platform {

TextBuffer::TextBuffer(const WCHAR* text, UINT32 length)
    : m_size(length), m_wide(std::make_unique_for_overwrite<WCHAR[]>(std::size_t{length} + 1)),
      m_units(std::make_unique_for_overwrite<char16_t[]>(std::size_t{length} + 1)) {
    char16_t all = 0;
    for (UINT32 i = 0; i < length; ++i) {
        const auto unit = static_cast<char16_t>(text[i]);
        all = static_cast<char16_t>(all | unit);
        m_wide[i] = text[i];
        m_units[i] = unit;
    }
    m_wide[length] = L'\0';
    m_units[length] = u'\0';
    m_isAscii = all < 0x80;
}

} // namespace platform
