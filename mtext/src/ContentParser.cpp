#include <mtext/MText.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "FieldFinder.h"
#include "FontCode.h"
#include "ParagraphCode.h"
#include "StackCode.h"
#include "TextReader.h"

namespace mtext {

namespace {

constexpr std::wstring_view PLAIN_TEXT_STOPS = L"\\{}%^";

class ContentReader final : private TextReader {
public:
    ContentReader(std::wstring_view content, const Defaults& defaults)
        : TextReader(content, defaults), m_fields(content) {
        m_paragraphs.emplace_back();
        m_paragraphs.back().alignment = defaults.alignment;
        m_builder.setParagraph(m_paragraphs.back());
    }

    Result read();

private:
    struct Group {
        State state;
        std::size_t position;
    };

    struct Font {
        std::uint32_t family;
        FontRequest request;
    };

    void onLineBreak() override { breakParagraph(false); }

    void breakParagraph(bool startsColumn);
    void openGroup();
    void closeGroup();
    void readField();
    void readCode();
    void readCharacterCode(std::size_t start);
    void keepMalformed(DiagnosticCode code, std::size_t start);
    void endNumber(bool valid, std::size_t start);
    void readHeight(std::size_t start);
    void readColorIndex(std::size_t start);
    void readTrueColor(std::size_t start);
    void readUnmetNumber(CharacterProperty property, DiagnosticCode code, float neutral, std::size_t start);
    void readFont(std::size_t start, bool upperCase);
    const Font& font(std::wstring_view argument, bool upperCase);
    void readParagraphCode(std::size_t start);
    void readStack(std::size_t start);
    bool readSwitch(wchar_t letter, std::size_t start);
    bool readSetting(wchar_t letter, std::size_t start);
    void readNext();
    void reportUnclosedGroups();

    FieldFinder m_fields;
    std::vector<Group> m_groups;
    std::vector<ParagraphState> m_paragraphs;
    // By the argument as it stands in the content; those of `\f` and of `\F` apart.
    std::array<std::unordered_map<std::wstring_view, Font>, 2> m_fonts;
};

void ContentReader::breakParagraph(bool startsColumn) {
    m_unmet.endParagraph(m_builder.paragraph().codes);
    m_builder.breakParagraph(m_state.style, m_paragraphs[m_state.paragraph], startsColumn);
}

void ContentReader::openGroup() {
    m_groups.push_back({m_state, m_cursor.position()});
    m_cursor.advance(1);
}

void ContentReader::closeGroup() {
    m_cursor.advance(1);
    if (m_groups.empty()) {
        report(DiagnosticCode::UnopenedGroup, m_cursor.position() - 1);
        return;
    }
    m_state = m_groups.back().state;
    m_groups.pop_back();
    if (m_builder.atParagraphStart()) {
        m_builder.setParagraph(m_paragraphs[m_state.paragraph]);
    }
}

// The value of a field is known to the program that drew it, not to its code.
void ContentReader::readField() {
    const std::size_t start = m_cursor.position();
    m_cursor.advance(*m_fields.end(start) - start);
    appendText(m_cursor.from(start), start);
    report(DiagnosticCode::Field, start);
}

// Keeps what was read since `start` as text.
void ContentReader::keepMalformed(DiagnosticCode code, std::size_t start) {
    appendText(m_cursor.from(start), start);
    report(code, start);
}

void ContentReader::endNumber(bool valid, std::size_t start) {
    m_cursor.skip(L';');
    if (!valid) {
        report(DiagnosticCode::MalformedCode, start);
    }
}

void ContentReader::readHeight(std::size_t start) {
    const std::optional<float> value = m_cursor.readNumber();
    float capSize = value.value_or(0.0F);
    if (value && (m_cursor.skip(L'x') || m_cursor.skip(L'X'))) {
        capSize *= m_state.style.capSize;
    }
    const bool valid = std::isnormal(capSize) && capSize > 0.0F;
    if (valid) {
        m_state.style.capSize = capSize;
    }
    endNumber(valid, start);
}

void ContentReader::readColorIndex(std::size_t start) {
    const std::optional<std::int32_t> index = m_cursor.readInteger();
    const bool valid = index && *index >= 0 && *index <= 256;
    if (valid) {
        m_state.style.color = argbFromColorIndex(*index, m_defaults.foreground, m_defaults.color);
    }
    endNumber(valid, start);
}

void ContentReader::readTrueColor(std::size_t start) {
    const std::optional<std::int32_t> value = m_cursor.readInteger();
    const bool valid = value && *value >= 0 && *value <= 0xFFFFFF;
    if (valid) {
        // Written with blue in the highest byte.
        const auto bgr = static_cast<std::uint32_t>(*value);
        m_state.style.color = 0xFF000000U | (bgr & 0xFFU) << 16 | (bgr & 0xFF00U) | bgr >> 16;
    }
    endNumber(valid, start);
}

// A number without a place in the document; `neutral` changes nothing anyway.
void ContentReader::readUnmetNumber(CharacterProperty property, DiagnosticCode code, float neutral, std::size_t start) {
    const std::optional<float> value = m_cursor.readNumber();
    if (value && !m_cursor.skip(L'x')) {
        m_cursor.skip(L'X');
    }
    endNumber(value.has_value(), start);
    if (value) {
        hold(property, *value != neutral, code, start);
    }
}

const ContentReader::Font& ContentReader::font(std::wstring_view argument, bool upperCase) {
    const auto [place, isNew] = m_fonts[upperCase ? 1 : 0].try_emplace(argument);
    Font& font = place->second;
    if (isNew) {
        font.request = readFontCode(argument, upperCase, characterContext());
        std::wstring family;
        if (m_defaults.resolveFont && !font.request.name.empty()) {
            family = m_defaults.resolveFont(font.request);
        }
        font.family = m_builder.family(family.empty() ? font.request.name : family);
    }
    return font;
}

void ContentReader::readFont(std::size_t start, bool upperCase) {
    const std::optional<std::wstring_view> argument = m_cursor.readArgument();
    if (!argument) {
        keepMalformed(DiagnosticCode::MalformedCode, start);
        return;
    }
    const Font& wanted = font(*argument, upperCase);
    m_state.style.fontStyle.bold = wanted.request.bold;
    m_state.style.fontStyle.italic = wanted.request.italic;
    if (wanted.request.name.empty()) {
        return;
    }
    m_state.style.family = wanted.family;
    m_state.shapeFont = wanted.request.shapeFont;
    m_state.codePage = m_defaults.codePage;
    if (wanted.request.charset) {
        m_state.codePage = codePageFromCharset(*wanted.request.charset).value_or(m_defaults.codePage);
    }
    const bool bigFontLost = !wanted.request.bigFont.empty() && !m_defaults.resolveFont;
    hold(CharacterProperty::BigFont, bigFontLost, DiagnosticCode::BigFont, start);
}

void ContentReader::readParagraphCode(std::size_t start) {
    const ContentCursor behindLetter = m_cursor;
    const std::optional<std::wstring_view> argument = m_cursor.readArgument();
    if (!argument || !looksLikeParagraphCode(*argument)) {
        m_cursor = behindLetter;
        keepMalformed(DiagnosticCode::MalformedCode, start);
        return;
    }
    ParagraphState state = m_paragraphs[m_state.paragraph];
    std::vector<ParagraphFinding> findings;
    applyParagraphCode(*argument, behindLetter.position(), m_defaults, state, m_unmet, findings);
    for (const ParagraphFinding& finding : findings) {
        report(finding.code, behindLetter.position() + finding.offset, finding.length);
    }
    m_builder.setParagraph(state);
    m_state.paragraph = static_cast<std::uint32_t>(m_paragraphs.size());
    m_paragraphs.push_back(std::move(state));
}

void ContentReader::readStack(std::size_t start) {
    const StackedText stack = readStackCode(m_cursor.rest(), characterContext());
    m_cursor.advance(stack.length);
    if (stack.text.find_first_of(L"\n\r\t") == std::wstring::npos) {
        m_unmet.note(stack.text, m_state.style.capSize, m_state.codes);
        m_builder.appendApart(stack.text, m_state.style);
    } else {
        appendText(stack.text, start);
    }
    if (!stack.terminated || !stack.text.empty()) {
        report(stack.terminated ? DiagnosticCode::StackedText : DiagnosticCode::MalformedCode, start);
    }
    if (stack.undecodable) {
        report(DiagnosticCode::UndecodableCharacter, start);
    }
}

void ContentReader::readCharacterCode(std::size_t start) {
    if (readSpecial()) {
        return;
    }
    const bool cut = m_cursor.peek(2) == L'+';
    m_cursor.advance(cut ? 3 : 2);
    keepMalformed(cut ? DiagnosticCode::MalformedCode : DiagnosticCode::UnknownCode, start);
}

// A code that takes no argument. False for any other letter.
bool ContentReader::readSwitch(wchar_t letter, std::size_t start) {
    switch (letter) {
    case L'\\':
    case L'{':
    case L'}':
        append(std::wstring_view(&letter, 1));
        return true;
    case L'~':
        append(L"\u00A0");
        return true;
    case L'P':
        breakParagraph(false);
        return true;
    case L'N':
        breakParagraph(true);
        report(DiagnosticCode::ColumnBreak, start);
        return true;
    case L'X':
        breakParagraph(false);
        report(DiagnosticCode::DimensionLineBreak, start);
        return true;
    case L'L':
    case L'l':
        m_state.style.fontStyle.underline = letter == L'L';
        return true;
    case L'O':
    case L'o':
        setOverline(letter == L'O', start);
        return true;
    case L'K':
    case L'k':
        setStrikethrough(letter == L'K', start);
        return true;
    default:
        return false;
    }
}

// A code with an argument behind its letter. False for any other letter.
bool ContentReader::readSetting(wchar_t letter, std::size_t start) {
    switch (letter) {
    case L'f':
    case L'F':
        readFont(start, letter == L'F');
        return true;
    case L'H':
        readHeight(start);
        return true;
    case L'C':
        readColorIndex(start);
        return true;
    case L'c':
        readTrueColor(start);
        return true;
    case L'A':
        readUnmetNumber(CharacterProperty::InlineAlignment, DiagnosticCode::InlineAlignment, 0.0F, start);
        return true;
    case L'Q':
        readUnmetNumber(CharacterProperty::ObliqueAngle, DiagnosticCode::ObliqueAngle, 0.0F, start);
        return true;
    case L'T':
        readUnmetNumber(CharacterProperty::Tracking, DiagnosticCode::Tracking, 1.0F, start);
        return true;
    case L'W':
        readUnmetNumber(CharacterProperty::WidthFactor, DiagnosticCode::WidthFactor, 1.0F, start);
        return true;
    case L'p':
        readParagraphCode(start);
        return true;
    case L'S':
        readStack(start);
        return true;
    default:
        return false;
    }
}

void ContentReader::readCode() {
    const std::size_t start = m_cursor.position();
    const std::optional<wchar_t> letter = m_cursor.peek(1);
    if (letter == L'U' || letter == L'u' || letter == L'M') {
        readCharacterCode(start);
        return;
    }
    if (letter) {
        m_cursor.advance(2);
        if (readSwitch(*letter, start) || readSetting(*letter, start)) {
            return;
        }
        // What follows the backslash is read as if it were not there.
        m_cursor = ContentCursor(m_content);
        m_cursor.advance(start);
    }
    m_cursor.advance(1);
    keepMalformed(letter ? DiagnosticCode::UnknownCode : DiagnosticCode::MalformedCode, start);
}

void ContentReader::readNext() {
    switch (*m_cursor.peek()) {
    case L'\\':
        readCode();
        return;
    case L'{':
        openGroup();
        return;
    case L'}':
        closeGroup();
        return;
    case L'%':
        if (m_fields.end(m_cursor.position())) {
            readField();
            return;
        }
        [[fallthrough]];
    case L'^':
        if (readSpecial()) {
            return;
        }
        break;
    default:
        break;
    }
    readPlainText(PLAIN_TEXT_STOPS);
}

void ContentReader::reportUnclosedGroups() {
    for (const Group& group : m_groups) {
        report(DiagnosticCode::UnclosedGroup, group.position, 1);
    }
}

Result ContentReader::read() {
    while (!m_cursor.atEnd()) {
        readNext();
    }
    reportUnclosedGroups();
    return finish();
}

} // namespace

Result parse(std::wstring_view content, const Defaults& defaults) {
    return ContentReader(content, defaults).read();
}

} // namespace mtext
