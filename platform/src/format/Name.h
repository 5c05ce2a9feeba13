#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <dwrite.h>

namespace platform {

/// An immutable name that formats, ranges and runs share: a font family's or a locale's. Null stands for the empty
/// name, so that the usual empty locale costs nothing.
using Name = std::shared_ptr<const std::wstring>;

/// Wraps `text`. Names that the calling thread used a moment ago are shared instead of copied.
Name makeName(std::wstring_view text);

/// Wraps a locale's name in the lower case in which locale names are kept and compared (ASCII letters only, as BCP 47
/// has).
Name makeLocaleName(std::wstring_view text);

/// The characters of `name`; empty for null.
const std::wstring& textOf(const Name& name) noexcept;

/// Whether both stand for the same characters.
bool sameName(const Name& left, const Name& right) noexcept;

/// Copies `text` with its terminator into a caller's buffer of `size` elements, as the platform's string getters do: a
/// buffer that is too small gets an empty string, and the answer is E_NOT_SUFFICIENT_BUFFER.
HRESULT copyName(const std::wstring& text, WCHAR* buffer, UINT32 size) noexcept;

/// Whether every element is a UTF-16 code unit. On platforms whose WCHAR is wider, an element can be more than that.
bool isUtf16(std::wstring_view text) noexcept;

} // namespace platform
