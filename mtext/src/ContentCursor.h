#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace mtext {

/// A place in a content string and the small readings codes are made of. Every
/// reading either succeeds and moves past what it read, or leaves the place.
class ContentCursor {
public:
    explicit ContentCursor(std::wstring_view content) : m_content(content) {}

    bool atEnd() const { return m_position == m_content.size(); }
    std::size_t position() const { return m_position; }
    std::wstring_view rest() const { return m_content.substr(m_position); }
    std::wstring_view from(std::size_t start) const { return m_content.substr(start, m_position - start); }

    /// The unit `offset` places on, or nothing beyond the end.
    std::optional<wchar_t> peek(std::size_t offset = 0) const;

    void advance(std::size_t count) { m_position += count; }
    bool skip(wchar_t unit);

    /// Optional sign, digits with a point among them, optional exponent; as a
    /// finite number. Nothing for digits that no float can hold.
    std::optional<float> readNumber();

    /// Optional sign and digits. Nothing for a number of more than nine digits.
    std::optional<std::int32_t> readInteger();

    /// Everything up to the next semicolon, which is skipped. Nothing if a
    /// brace, a line break, the end or a backslash comes first, unless the
    /// backslash opens a character written as `\U+` or `\M+`.
    std::optional<std::wstring_view> readArgument();

private:
    std::wstring_view m_content;
    std::size_t m_position = 0;
};

/// Whether `unit` is one of `0` to `9`.
bool isDigit(wchar_t unit);

/// The ASCII letter in lower case; any other unit as it is.
wchar_t lowerAscii(wchar_t unit);

} // namespace mtext
