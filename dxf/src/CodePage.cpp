#include "Converter.h"
#include <dxf/CodePage.h>

#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <new>

namespace dxf {
namespace {

constexpr unsigned fallbackPage = 1252;

struct CloseConverter {
    void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};
using ConverterPtr = std::unique_ptr<UConverter, CloseConverter>;

ConverterPtr openConverter(unsigned codePage) {
    const char* name = converterName(codePage);
    if (name == nullptr) {
        return nullptr;
    }
    UErrorCode status = U_ZERO_ERROR;
    ConverterPtr converter(ucnv_open(name, &status));
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

bool isAscii(std::string_view bytes) {
    return std::ranges::all_of(bytes, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::wstring wideFromUnits(const std::u16string& units) {
    return {units.begin(), units.end()};
}

/// ICU counts in 32 bits; one text of more than this is cut there.
std::int32_t clampedLength(std::size_t length) {
    constexpr std::size_t longest = std::numeric_limits<std::int32_t>::max() / 4;
    return static_cast<std::int32_t>(std::min(length, longest));
}

bool isConversionFailure(UConverterCallbackReason reason) {
    return reason == UCNV_UNASSIGNED || reason == UCNV_ILLEGAL || reason == UCNV_IRREGULAR;
}

/// ICU's own substitution gives U+001A for some bytes of some pages; here it is always U+FFFD, and counted.
void U_CALLCONV countReplaced(const void* context, UConverterToUnicodeArgs* args, const char*, std::int32_t,
                              UConverterCallbackReason reason, UErrorCode* status) {
    if (!isConversionFailure(reason)) {
        return;
    }
    static constexpr char16_t replacement = 0xFFFD;
    *status = U_ZERO_ERROR;
    ++*static_cast<std::size_t*>(const_cast<void*>(context));
    ucnv_cbToUWriteUChars(args, &replacement, 1, 0, status);
}

/// What a code page lacks is written as the escape that every reader of drawings' texts resolves.
void U_CALLCONV writeEscapes(const void*, UConverterFromUnicodeArgs* args, const UChar* units, std::int32_t length,
                             UChar32, UConverterCallbackReason reason, UErrorCode* status) {
    if (!isConversionFailure(reason)) {
        return;
    }
    constexpr std::u16string_view digits = u"0123456789ABCDEF";
    *status = U_ZERO_ERROR;
    for (std::int32_t i = 0; i < length; ++i) {
        const auto unit = static_cast<unsigned>(units[i]);
        const std::array<char16_t, 7> escape{u'\\',
                                             u'U',
                                             u'+',
                                             digits[unit >> 12 & 0xF],
                                             digits[unit >> 8 & 0xF],
                                             digits[unit >> 4 & 0xF],
                                             digits[unit & 0xF]};
        const UChar* begin = escape.data();
        ucnv_cbFromUWriteUChars(args, &begin, begin + escape.size(), 0, status);
    }
}

DecodedText decodeWith(UConverter* converter, std::string_view bytes) {
    DecodedText result;
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setToUCallBack(converter, countReplaced, &result.replaced, nullptr, nullptr, &status);
    // Two units are the most that one byte gives; a page whose bytes give more is not in the list.
    const std::int32_t length = clampedLength(bytes.size());
    std::u16string units(static_cast<std::size_t>(length) * 2 + 2, u'\0');
    const std::int32_t written =
        ucnv_toUChars(converter, units.data(), static_cast<std::int32_t>(units.size()), bytes.data(), length, &status);
    units.resize(U_SUCCESS(status) ? static_cast<std::size_t>(written) : 0);
    result.text = wideFromUnits(units);
    return result;
}

} // namespace

DecodedText decodeLossy(std::string_view bytes, unsigned codePage) {
    if (isAscii(bytes)) {
        return {{bytes.begin(), bytes.end()}, 0};
    }
    ConverterPtr converter = openConverter(codePage);
    if (!converter) {
        converter = openConverter(fallbackPage);
    }
    if (!converter) {
        throw std::bad_alloc();
    }
    return decodeWith(converter.get(), bytes);
}

std::optional<std::wstring> decodeBytes(std::string_view bytes, unsigned codePage) {
    if (!isKnownCodePage(codePage)) {
        return std::nullopt;
    }
    DecodedText decoded = decodeLossy(bytes, codePage);
    return decoded.replaced == 0 ? std::optional(std::move(decoded.text)) : std::nullopt;
}

std::string encodeText(std::wstring_view text, unsigned codePage) {
    if (std::ranges::all_of(text, [](wchar_t c) { return static_cast<std::uint32_t>(c) < 0x80; })) {
        std::string ascii(text.size(), '\0');
        std::ranges::transform(text, ascii.begin(), [](wchar_t c) { return static_cast<char>(c); });
        return ascii;
    }
    UErrorCode status = U_ZERO_ERROR;
    ConverterPtr converter = openConverter(codePage);
    if (!converter) {
        converter.reset(ucnv_open("us-ascii", &status));
    }
    if (!converter) {
        throw std::bad_alloc();
    }
    ucnv_setFromUCallBack(converter.get(), writeEscapes, nullptr, nullptr, nullptr, &status);
    std::u16string units(text.size(), u'\0');
    std::ranges::transform(text, units.begin(), [](wchar_t c) {
        const auto value = static_cast<std::uint32_t>(c);
        return static_cast<char16_t>(value > 0xFFFF ? 0xFFFD : value);
    });
    constexpr std::size_t escapeLength = 7;
    const std::int32_t length = clampedLength(units.size());
    std::string bytes(static_cast<std::size_t>(length) * escapeLength + 8, '\0');
    const std::int32_t written =
        ucnv_fromUChars(converter.get(), bytes.data(), clampedLength(bytes.size()), units.data(), length, &status);
    bytes.resize(U_SUCCESS(status) ? static_cast<std::size_t>(written) : 0);
    return bytes;
}

std::size_t utf8Evidence(std::string_view bytes) {
    if (isAscii(bytes)) {
        return 0;
    }
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8(nullptr, 0, nullptr, bytes.data(), clampedLength(bytes.size()), &status);
    if (status != U_BUFFER_OVERFLOW_ERROR) {
        return 0;
    }
    return static_cast<std::size_t>(
        std::ranges::count_if(bytes, [](char c) { return static_cast<unsigned char>(c) >= 0xC0; }));
}

std::wstring resolveUnicodeEscapes(std::wstring_view name) {
    constexpr std::size_t escapeLength = 7;
    std::wstring result;
    result.reserve(name.size());
    for (std::size_t i = 0; i < name.size(); ++i) {
        const std::wstring_view rest = name.substr(i, escapeLength);
        std::int32_t unit = 0;
        bool escape = rest.size() == escapeLength && (rest.starts_with(L"\\U+") || rest.starts_with(L"\\u+"));
        for (std::size_t k = 3; escape && k < escapeLength; ++k) {
            const std::int32_t digit = rest[k] < 0x80 ? u_digit(static_cast<UChar32>(rest[k]), 16) : -1;
            escape = digit >= 0;
            unit = unit * 16 + digit;
        }
        result += escape ? static_cast<wchar_t>(unit) : name[i];
        i += escape ? escapeLength - 1 : 0;
    }
    return result;
}

std::wstring foldName(std::wstring_view name) {
    std::u16string units(name.begin(), name.end());
    std::wstring result;
    result.reserve(units.size());
    const auto length = static_cast<std::int32_t>(units.size());
    for (std::int32_t i = 0; i < length;) {
        UChar32 c = 0;
        U16_NEXT(units.data(), i, length, c);
        const UChar32 folded = u_foldCase(c, U_FOLD_CASE_DEFAULT);
        if (folded > 0xFFFF) {
            result += static_cast<wchar_t>(U16_LEAD(folded));
            result += static_cast<wchar_t>(U16_TRAIL(folded));
        } else {
            result += static_cast<wchar_t>(folded);
        }
    }
    return result;
}

} // namespace dxf
