#include "TextReader.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace mtext {

namespace {

constexpr std::size_t LONGEST_QUOTE = 64;

bool isControl(wchar_t unit) {
    // Elements are negative where wchar_t is signed and what it holds is no UTF-16.
    return static_cast<std::uint32_t>(unit) < 0x20;
}

} // namespace

TextReader::TextReader(std::wstring_view content, const Defaults& defaults)
    : m_defaults(defaults), m_content(content), m_cursor(content), m_builder(defaults) {
    m_state.style.family = m_builder.family(defaults.fontFamily);
    m_state.style.capSize = defaults.capSize;
    m_state.style.color = defaults.color;
    m_state.style.fontStyle = {defaults.bold, defaults.italic, defaults.underline};
    m_state.codePage = defaults.codePage;
    m_state.shapeFont = defaults.shapeFont;
}

void TextReader::report(DiagnosticCode code, std::size_t start) {
    report(code, start, m_cursor.position() - start);
}

void TextReader::report(DiagnosticCode code, std::size_t start, std::size_t length) {
    const std::wstring_view quote = m_content.substr(start, std::min(length, LONGEST_QUOTE));
    m_diagnostics.push_back({start, length, code, std::wstring(quote)});
}

void TextReader::appendText(std::wstring_view text, std::size_t start) {
    while (!text.empty()) {
        const auto control = std::find_if(text.begin(), text.end(), isControl);
        const auto plain = static_cast<std::size_t>(control - text.begin());
        append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) {
            return;
        }
        if (text.front() == L'\n') {
            onLineBreak();
        } else if (text.front() == L'\t') {
            append(L"\t");
        } else if (text.front() != L'\r') {
            // It may have kept words apart.
            append(L" ");
            report(DiagnosticCode::ControlCharacter, start);
        }
        text.remove_prefix(1);
    }
}

bool TextReader::readSpecial() {
    const std::optional<SpecialCharacter> special = readSpecialCharacter(m_cursor.rest(), characterContext());
    if (!special) {
        return false;
    }
    const std::size_t start = m_cursor.position();
    m_cursor.advance(special->length);
    switch (special->action) {
    case SpecialAction::ToggleUnderline:
        m_state.style.fontStyle.underline = !m_state.style.fontStyle.underline;
        break;
    case SpecialAction::ToggleOverline:
        setOverline(m_state.codes[CharacterProperty::Overline] == 0, start);
        break;
    case SpecialAction::ToggleStrikethrough:
        setStrikethrough(m_state.codes[CharacterProperty::Strikethrough] == 0, start);
        break;
    case SpecialAction::Text:
        appendText(special->text, start);
        break;
    }
    if (special->problem) {
        report(*special->problem, start);
    }
    return true;
}

void TextReader::readPlainText(std::wstring_view stops) {
    const std::wstring_view rest = m_cursor.rest();
    std::size_t length = 1;
    while (length < rest.size() && !isControl(rest[length]) && stops.find(rest[length]) == std::wstring_view::npos) {
        ++length;
    }
    const std::size_t start = m_cursor.position();
    m_cursor.advance(length);
    appendText(m_cursor.from(start), start);
}

void TextReader::setOverline(bool on, std::size_t start) {
    if (!on || m_state.codes[CharacterProperty::Overline] == 0) {
        hold(CharacterProperty::Overline, on, DiagnosticCode::Overline, start);
    }
}

void TextReader::setStrikethrough(bool on, std::size_t start) {
    if (!on || m_state.codes[CharacterProperty::Strikethrough] == 0) {
        hold(CharacterProperty::Strikethrough, on, DiagnosticCode::Strikethrough, start);
    }
}

void TextReader::hold(CharacterProperty property, bool unmet, DiagnosticCode code, std::size_t start) {
    m_state.codes[property] = unmet ? m_unmet.add(code, start, m_cursor.position() - start) : 0;
}

void TextReader::append(std::wstring_view text) {
    m_unmet.note(text, m_state.style.capSize, m_state.codes);
    m_builder.append(text, m_state.style);
}

Result TextReader::finish() {
    m_unmet.endParagraph(m_builder.paragraph().codes);
    Result result = m_builder.finish(m_state.style);
    m_unmet.endContent(result.formats, result.document.tabStopWidth);
    m_unmet.forEach(
        [this](DiagnosticCode code, std::size_t position, std::size_t length) { report(code, position, length); });
    std::stable_sort(m_diagnostics.begin(), m_diagnostics.end(),
                     [](const Diagnostic& left, const Diagnostic& right) { return left.position < right.position; });
    result.diagnostics = std::move(m_diagnostics);
    return result;
}

} // namespace mtext
