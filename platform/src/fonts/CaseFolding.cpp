#include "fonts/CaseFolding.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstdint>

namespace platform {

namespace {

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

std::wstring foldCase(std::wstring_view text) {
    std::wstring folded(text);
    bool ascii = true;
    for (wchar_t& c : folded) {
        ascii = ascii && static_cast<std::uint32_t>(c) < 0x80;
        c = c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
    }
    // A name with an element that is no UTF-16 unit equals nothing but itself.
    return ascii || !isUtf16(text) ? folded : foldUnicode(text);
}

} // namespace platform
