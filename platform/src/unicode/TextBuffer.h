#pragma once

#include <memory>
#include <string_view>

#include <dwrite.h>

namespace platform {

/// A layout's own copy of its text, in the two forms that are asked for: UTF-16 units for HarfBuzz and ICU, and the
/// caller's elements, into which glyph run descriptions point.
class TextBuffer {
public:
    /// Copies `length` elements, each of which must be a UTF-16 unit.
    TextBuffer(const WCHAR* text, UINT32 length);

    [[nodiscard]] UINT32 size() const noexcept { return m_size; }
    [[nodiscard]] std::u16string_view units() const noexcept { return {m_units.get(), m_size}; }
    [[nodiscard]] const WCHAR* wide() const noexcept { return m_wide.get(); }
    [[nodiscard]] bool isAscii() const noexcept { return m_isAscii; }

private:
    UINT32 m_size;
    bool m_isAscii;
    std::unique_ptr<WCHAR[]> m_wide;
    std::unique_ptr<char16_t[]> m_units;
};

} // namespace platform
