#include "fonts/CaseFolding.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstdint>

namespace platform {

namespace {

wchar_t lower(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool isUtf16(std::wstring_view text) {
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return static_cast<std::uint32_t>(c) <= 0xFFFF; });
}

std::wstring foldUnicode(std::wstring_view text) {
    const std::u16string units(text.begin(), text.end());
    const auto length = static_cast<std::int32_t>(units.size());
    UErrorCode status = U_ZERO_ERROR;
    // A character folds to at most three.
    std::u16string folded(units.size() * 3, u'\0');
    const std::int32_t size = u_strFoldCase(folded.data(), static_cast<std::int32_t>(folded.size()), units.data(),
                                            length, U_FOLD_CASE_DEFAULT, &status);
    if (U_FAILURE(status)) {
        return std::wstring(text);
    }
    return {folded.begin(), folded.begin() + size};
}

} // namespace

bool isAscii(std::wstring_view text) noexcept {
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return static_cast<std::uint32_t>(c) < 0x80; });
}

std::wstring foldCase(std::wstring_view text) {
    // A name with an element that is no UTF-16 unit equals nothing but itself.
    if (!isAscii(text) && isUtf16(text)) {
        return foldUnicode(text);
    }
    std::wstring folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), lower);
    return folded;
}

std::size_t FoldedHash::operator()(std::wstring_view text) const noexcept {
    std::uint64_t hash = 0xCBF29CE484222325u; // FNV-1a
    for (const wchar_t c : text) {
        hash = (hash ^ static_cast<std::uint32_t>(lower(c))) * 0x100000001B3u;
    }
    return static_cast<std::size_t>(hash);
}

bool FoldedEqual::operator()(std::wstring_view left, std::wstring_view right) const noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return lower(a) == lower(b); });
}

} // namespace platform
