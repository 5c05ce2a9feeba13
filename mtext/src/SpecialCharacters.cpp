#include "SpecialCharacters.h"

#include <array>
#include <utility>

#include "ContentCursor.h"

namespace mtext {

namespace {

constexpr wchar_t REPLACEMENT = 0xFFFD;
constexpr wchar_t DEGREE = 0x00B0;
constexpr wchar_t PLUS_MINUS = 0x00B1;
// The letter, not the sign for diameter: nearly every font has it.
constexpr wchar_t DIAMETER = 0x00D8;

SpecialCharacter character(std::size_t length, wchar_t unit) {
    return {length, std::wstring(1, unit), {}, {}};
}

std::optional<unsigned> hexDigit(wchar_t unit) {
    if (isDigit(unit)) {
        return static_cast<unsigned>(unit - L'0');
    }
    const wchar_t letter = lowerAscii(unit);
    if (letter >= L'a' && letter <= L'f') {
        return static_cast<unsigned>(letter - L'a') + 10U;
    }
    return std::nullopt;
}

std::optional<unsigned> fourHexDigits(std::wstring_view text) {
    if (text.size() < 4) {
        return std::nullopt;
    }
    unsigned value = 0;
    for (const wchar_t unit : text.substr(0, 4)) {
        const std::optional<unsigned> digit = hexDigit(unit);
        if (!digit) {
            return std::nullopt;
        }
        value = value * 16 + *digit;
    }
    return value;
}

SpecialCharacter decoded(std::size_t length, std::string_view bytes, unsigned codePage,
                         const CharacterContext& context) {
    const auto first = static_cast<unsigned char>(bytes.front());
    if (bytes.size() == 1 && first < 0x80) {
        return character(length, first);
    }
    if (context.decodeBytes) {
        if (std::optional<std::wstring> text = context.decodeBytes(bytes, codePage); text && !text->empty()) {
            return {length, std::move(*text), {}, {}};
        }
    } else if (bytes.size() == 1 && codePage == 1252 && first >= 0xA0) {
        // Western Windows text equals Latin-1 there.
        return character(length, first);
    }
    return {length, std::wstring(1, REPLACEMENT), {}, DiagnosticCode::UndecodableCharacter};
}

std::optional<SpecialCharacter> readUnicode(std::wstring_view text) {
    constexpr std::size_t PREFIX = 3;
    const std::optional<unsigned> value = fourHexDigits(text.substr(PREFIX));
    if (!value) {
        return std::nullopt;
    }
    return character(PREFIX + 4, static_cast<wchar_t>(*value));
}

std::optional<SpecialCharacter> readCodePageCharacter(std::wstring_view text, const CharacterContext& context) {
    constexpr std::size_t PREFIX = 4;
    constexpr std::array<unsigned, 5> PAGES{932, 950, 949, 1361, 936};
    if (text.size() < PREFIX || text[3] < L'1' || text[3] > L'5') {
        return std::nullopt;
    }
    const std::optional<unsigned> value = fourHexDigits(text.substr(PREFIX));
    if (!value) {
        return std::nullopt;
    }
    const std::array<char, 2> bytes{static_cast<char>(*value >> 8), static_cast<char>(*value & 0xFFU)};
    std::string_view used(bytes.data(), bytes.size());
    if (*value < 0x100) {
        used.remove_prefix(1);
    }
    return decoded(PREFIX + 4, used, PAGES[static_cast<std::size_t>(text[3] - L'1')], context);
}

std::optional<SpecialCharacter> readBackslash(std::wstring_view text, const CharacterContext& context) {
    if (text.size() < 3 || text[2] != L'+') {
        return std::nullopt;
    }
    if (text[1] == L'U' || text[1] == L'u') {
        return readUnicode(text);
    }
    if (text[1] == L'M') {
        return readCodePageCharacter(text, context);
    }
    return std::nullopt;
}

// `%%nnn`: the character at a place of the font's own code page.
std::optional<SpecialCharacter> readNumberedCharacter(std::wstring_view text, const CharacterContext& context) {
    constexpr std::size_t LENGTH = 5;
    if (text.size() < LENGTH || !isDigit(text[2]) || !isDigit(text[3]) || !isDigit(text[4])) {
        return std::nullopt;
    }
    const auto number = static_cast<unsigned>((text[2] - L'0') * 100 + (text[3] - L'0') * 10 + (text[4] - L'0'));
    if (number == 9 || number == 10 || number == 13 || (number >= 32 && number < 127)) {
        return character(LENGTH, static_cast<wchar_t>(number));
    }
    if (number < 32 || number > 255) {
        return std::nullopt;
    }
    // Shape fonts keep drafting symbols here; in others only the first place is free for one.
    if (number == 127) {
        return character(LENGTH, DEGREE);
    }
    if (context.shapeFont && number == 128) {
        return character(LENGTH, PLUS_MINUS);
    }
    if (context.shapeFont && number == 129) {
        return character(LENGTH, DIAMETER);
    }
    const char byte = static_cast<char>(number);
    return decoded(LENGTH, std::string_view(&byte, 1), context.codePage, context);
}

std::optional<SpecialCharacter> readPercent(std::wstring_view text, const CharacterContext& context) {
    constexpr std::size_t LENGTH = 3;
    if (text.size() < LENGTH || text[1] != L'%') {
        return std::nullopt;
    }
    switch (lowerAscii(text[2])) {
    case L'c':
        return character(LENGTH, DIAMETER);
    case L'd':
        return character(LENGTH, DEGREE);
    case L'p':
        return character(LENGTH, PLUS_MINUS);
    case L'%':
        return character(LENGTH, L'%');
    case L'u':
        return SpecialCharacter{LENGTH, {}, SpecialAction::ToggleUnderline, {}};
    case L'o':
        return SpecialCharacter{LENGTH, {}, SpecialAction::ToggleOverline, {}};
    case L'k':
        return SpecialCharacter{LENGTH, {}, SpecialAction::ToggleStrikethrough, {}};
    default:
        break;
    }
    if (std::optional<SpecialCharacter> numbered = readNumberedCharacter(text, context)) {
        return numbered;
    }
    const wchar_t letter = lowerAscii(text[2]);
    if (isDigit(letter) || (letter >= L'a' && letter <= L'z')) {
        return SpecialCharacter{2, L"%%", {}, DiagnosticCode::UnknownCode};
    }
    return std::nullopt;
}

std::optional<SpecialCharacter> readCaret(std::wstring_view text) {
    constexpr std::size_t LENGTH = 2;
    if (text.size() < LENGTH) {
        return std::nullopt;
    }
    switch (text[1]) {
    case L' ':
        return character(LENGTH, L'^');
    case L'I':
        return character(LENGTH, L'\t');
    case L'J':
        return character(LENGTH, L'\n');
    case L'M':
        return character(LENGTH, L'\r');
    default:
        break;
    }
    if (text[1] >= L'A' && text[1] <= L'Z') {
        // Some programs write a caret as it is, so this may be text just as well.
        return SpecialCharacter{LENGTH, std::wstring(text.substr(0, LENGTH)), {}, DiagnosticCode::ControlCharacter};
    }
    return std::nullopt;
}

} // namespace

std::optional<unsigned> codePageFromCharset(unsigned charset) {
    constexpr std::array PAGES{std::pair{128U, 932U},  std::pair{129U, 949U},  std::pair{130U, 1361U},
                               std::pair{134U, 936U},  std::pair{136U, 950U},  std::pair{161U, 1253U},
                               std::pair{162U, 1254U}, std::pair{163U, 1258U}, std::pair{177U, 1255U},
                               std::pair{178U, 1256U}, std::pair{186U, 1257U}, std::pair{204U, 1251U},
                               std::pair{222U, 874U},  std::pair{238U, 1250U}};
    for (const auto& [set, page] : PAGES) {
        if (set == charset) {
            return page;
        }
    }
    return std::nullopt;
}

std::wstring replaceWrittenCharacters(std::wstring_view text, const CharacterContext& context) {
    std::wstring replaced;
    while (!text.empty()) {
        std::optional<SpecialCharacter> special;
        if (text.front() == L'\\') {
            special = readBackslash(text, context);
        }
        replaced += special ? special->text : std::wstring(1, text.front());
        text.remove_prefix(special ? special->length : 1);
    }
    return replaced;
}

std::optional<SpecialCharacter> readSpecialCharacter(std::wstring_view text, const CharacterContext& context) {
    switch (text.front()) {
    case L'\\':
        return readBackslash(text, context);
    case L'%':
        return readPercent(text, context);
    case L'^':
        return readCaret(text);
    default:
        return std::nullopt;
    }
}

} // namespace mtext
