#include "ContentCursor.h"

#include <charconv>
#include <cmath>
#include <string>

namespace mtext {

bool isDigit(wchar_t unit) {
    return unit >= L'0' && unit <= L'9';
}

wchar_t lowerAscii(wchar_t unit) {
    return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit - L'A' + L'a') : unit;
}

std::optional<wchar_t> ContentCursor::peek(std::size_t offset) const {
    if (offset >= m_content.size() - m_position) {
        return std::nullopt;
    }
    return m_content[m_position + offset];
}

bool ContentCursor::skip(wchar_t unit) {
    if (peek() != unit) {
        return false;
    }
    ++m_position;
    return true;
}

namespace {

std::size_t countDigits(std::wstring_view text) {
    std::size_t count = 0;
    while (count < text.size() && isDigit(text[count])) {
        ++count;
    }
    return count;
}

// Length of the number that `text` begins with; 0 if it begins with none.
std::size_t numberLength(std::wstring_view text) {
    std::size_t length = 0;
    if (!text.empty() && (text[0] == L'+' || text[0] == L'-')) {
        length = 1;
    }
    const std::size_t whole = countDigits(text.substr(length));
    length += whole;
    std::size_t fraction = 0;
    if (length < text.size() && text[length] == L'.') {
        fraction = countDigits(text.substr(length + 1));
        if (whole + fraction > 0) {
            length += 1 + fraction;
        }
    }
    if (whole + fraction == 0) {
        return 0;
    }
    if (length < text.size() && lowerAscii(text[length]) == L'e') {
        const bool hasSign = length + 1 < text.size() && (text[length + 1] == L'+' || text[length + 1] == L'-');
        const std::size_t sign = hasSign ? 1 : 0;
        const std::size_t exponent = countDigits(text.substr(length + 1 + sign));
        if (exponent > 0) {
            length += 1 + sign + exponent;
        }
    }
    return length;
}

} // namespace

std::optional<float> ContentCursor::readNumber() {
    const std::size_t length = numberLength(rest());
    if (length == 0) {
        return std::nullopt;
    }
    std::string digits;
    for (const wchar_t unit : rest().substr(0, length)) {
        digits.push_back(static_cast<char>(unit));
    }
    // std::from_chars knows no plus sign and no locale.
    const char* first = digits.data() + (digits.front() == '+' ? 1 : 0);
    float value = 0.0F;
    const auto [end, error] = std::from_chars(first, digits.data() + digits.size(), value);
    if (error != std::errc() || !std::isfinite(value)) {
        return std::nullopt;
    }
    m_position += length;
    return value;
}

std::optional<std::int32_t> ContentCursor::readInteger() {
    const std::wstring_view text = rest();
    const std::size_t sign = !text.empty() && (text[0] == L'+' || text[0] == L'-') ? 1 : 0;
    const std::size_t length = countDigits(text.substr(sign));
    if (length == 0 || length > 9) {
        return std::nullopt;
    }
    std::int32_t value = 0;
    for (const wchar_t unit : text.substr(sign, length)) {
        value = value * 10 + static_cast<std::int32_t>(unit - L'0');
    }
    m_position += sign + length;
    return sign == 1 && text[0] == L'-' ? -value : value;
}

std::optional<std::wstring_view> ContentCursor::readArgument() {
    const std::wstring_view text = rest();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t unit = text[i];
        if (unit == L';') {
            m_position += i + 1;
            return text.substr(0, i);
        }
        if (unit == L'\\') {
            const bool writtenCharacter = i + 2 < text.size() && text[i + 2] == L'+' &&
                                          (text[i + 1] == L'U' || text[i + 1] == L'u' || text[i + 1] == L'M');
            if (!writtenCharacter) {
                return std::nullopt;
            }
        }
        if (unit == L'{' || unit == L'}' || unit == L'\n' || unit == L'\r') {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

} // namespace mtext
