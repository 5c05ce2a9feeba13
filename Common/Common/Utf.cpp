#include <Common/Utf.h>

#include <cstddef>

namespace common {

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr char32_t firstSupplementary = 0x10000;

bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// What may follow a lead byte: how many continuation bytes, and which range the first of them has, so that overlong
/// forms, surrogates and values beyond U+10FFFF end at the lead byte.
struct Lead {
    int continuations;
    unsigned char secondMin;
    unsigned char secondMax;
};

Lead leadOf(unsigned char byte) {
    if (byte < 0x80) {
        return {0, 0, 0};
    }
    if (byte >= 0xC2 && byte <= 0xDF) {
        return {1, 0x80, 0xBF};
    }
    if (byte >= 0xE0 && byte <= 0xEF) {
        return {2, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF)};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        return {3, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF)};
    }
    return {-1, 0, 0};
}

/// Takes one character, or one maximal ill-formed part as U+FFFD, from `text` at `i`.
char32_t takeFromUtf8(std::string_view text, std::size_t& i) {
    const auto first = static_cast<unsigned char>(text[i++]);
    const Lead lead = leadOf(first);
    if (lead.continuations == 0) {
        return first;
    }
    if (lead.continuations < 0) {
        return replacement;
    }
    // The lead byte's own share: its bits below the length marker.
    auto character = static_cast<char32_t>(first & (0x3F >> lead.continuations));
    unsigned char least = lead.secondMin;
    unsigned char greatest = lead.secondMax;
    for (int left = lead.continuations; left > 0; --left) {
        if (i == text.size()) {
            return replacement;
        }
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < least || byte > greatest) {
            return replacement;
        }
        character = (character << 6) | (byte & 0x3F);
        least = 0x80;
        greatest = 0xBF;
        ++i;
    }
    return character;
}

/// Takes one character, or one lone surrogate or oversized element as U+FFFD, from `text` at `i`.
char32_t takeFromWide(std::wstring_view text, std::size_t& i) {
    const auto unit = static_cast<char32_t>(text[i++]);
    if (isHighSurrogate(unit) && i < text.size() && isLowSurrogate(static_cast<char32_t>(text[i]))) {
        const auto low = static_cast<char32_t>(text[i++]);
        return firstSupplementary + ((unit - 0xD800) << 10) + (low - 0xDC00);
    }
    const bool isCharacter = unit < firstSupplementary && !isHighSurrogate(unit) && !isLowSurrogate(unit);
    return isCharacter ? unit : replacement;
}

void appendUtf8(std::string& text, char32_t character) {
    const auto continuation = [&](int shift) { text += static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        continuation(0);
    } else if (character < firstSupplementary) {
        text += static_cast<char>(0xE0 | (character >> 12));
        continuation(6);
        continuation(0);
    } else {
        text += static_cast<char>(0xF0 | (character >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

void appendWide(std::wstring& text, char32_t character) {
    if (character < firstSupplementary) {
        text += static_cast<wchar_t>(character);
    } else {
        const char32_t offset = character - firstSupplementary;
        text += static_cast<wchar_t>(0xD800 + (offset >> 10));
        text += static_cast<wchar_t>(0xDC00 + (offset & 0x3FF));
    }
}

} // namespace

std::wstring wideFromUtf8(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        appendWide(wide, takeFromUtf8(text, i));
    }
    return wide;
}

std::string utf8FromWide(std::wstring_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        appendUtf8(utf8, takeFromWide(text, i));
    }
    return utf8;
}

} // namespace common
