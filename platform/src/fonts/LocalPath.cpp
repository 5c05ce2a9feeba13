#include "fonts/LocalPath.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <array>
#include <cstdint>

// ICU's macros for UTF-8 narrow their intermediate values.
#pragma GCC diagnostic ignored "-Wconversion"

namespace platform {

namespace {

constexpr UChar32 strayByte = 0xDC00;

} // namespace

std::wstring widePath(std::string_view path) {
    std::wstring wide;
    const auto length = static_cast<std::int32_t>(path.size());
    for (std::int32_t at = 0; at < length;) {
        const std::int32_t start = at;
        UChar32 c = 0;
        U8_NEXT(path.data(), at, length, c);
        if (c < 0) {
            at = start + 1;
            wide += static_cast<wchar_t>(strayByte + static_cast<unsigned char>(path[static_cast<std::size_t>(start)]));
        } else if (U_IS_BMP(c)) {
            wide += static_cast<wchar_t>(c);
        } else {
            wide += static_cast<wchar_t>(U16_LEAD(c));
            wide += static_cast<wchar_t>(U16_TRAIL(c));
        }
    }
    return wide;
}

std::optional<std::string> localPath(std::wstring_view path) {
    const std::u16string units(path.begin(), path.end());
    std::string bytes;
    for (std::size_t at = 0; at < units.size();) {
        UChar32 c = 0;
        U16_NEXT(units.data(), at, units.size(), c);
        if (c >= strayByte + 0x80 && c <= strayByte + 0xFF) {
            bytes += static_cast<char>(c - strayByte);
            continue;
        }
        std::array<char, U8_MAX_LENGTH> encoded{};
        std::size_t length = 0;
        UBool isWrong = c == 0;
        U8_APPEND(encoded.data(), length, encoded.size(), c, isWrong);
        if (isWrong != 0) {
            return std::nullopt;
        }
        bytes.append(encoded.data(), length);
    }
    return bytes.empty() ? std::nullopt : std::optional(std::move(bytes));
}

} // namespace platform
