#include "ParagraphCode.h"

#include <algorithm>
#include <cmath>

#include "ContentCursor.h"

namespace mtext {

namespace {

constexpr std::size_t MOST_TAB_STOPS = 64;

using Alignment = render::eRichTextParagraphAlignment;

class ParagraphCodeReader {
public:
    ParagraphCodeReader(std::wstring_view argument, std::size_t position, const Defaults& defaults,
                        ParagraphState& state, UnmetCodes& unmet, std::vector<ParagraphFinding>& findings)
        : m_cursor(argument), m_position(position), m_defaults(defaults), m_state(state), m_unmet(unmet),
          m_findings(findings) {}

    void read() {
        while (!m_cursor.atEnd()) {
            readProperty();
        }
    }

private:
    void report(DiagnosticCode code, std::size_t start) {
        m_findings.push_back({start, m_cursor.position() - start, code});
    }

    // The property has, from here on, a value that cannot be laid out, or has none.
    void hold(ParagraphProperty property, bool unmet, DiagnosticCode code, std::size_t start) {
        m_state.codes[property] = unmet ? m_unmet.add(code, m_position + start, m_cursor.position() - start) : 0;
    }

    float inDrawingUnits(float capHeights) const {
        const float length = capHeights * m_defaults.capSize;
        return std::isfinite(length) ? length : 0.0F;
    }

    // A number, or 0 for `*` and for nothing.
    float readValue() {
        if (m_cursor.skip(L'*')) {
            return 0.0F;
        }
        return m_cursor.readNumber().value_or(0.0F);
    }

    void readLength(float& length, ParagraphProperty property, DiagnosticCode code, std::size_t start) {
        length = inDrawingUnits(readValue());
        hold(property, length != 0.0F, code, start);
    }

    void readAlignment(std::size_t start) {
        const std::optional<wchar_t> letter = m_cursor.peek();
        m_state.alignment = m_defaults.alignment;
        m_state.codes[ParagraphProperty::Distribution] = 0;
        if (!letter || *letter == L',') {
            return;
        }
        m_cursor.advance(1);
        switch (lowerAscii(*letter)) {
        case L'*':
            break;
        case L'l':
            m_state.alignment = Alignment::Left;
            break;
        case L'r':
            m_state.alignment = Alignment::Right;
            break;
        case L'c':
            m_state.alignment = Alignment::Center;
            break;
        case L'j':
            m_state.alignment = Alignment::Justify;
            break;
        case L'd':
            m_state.alignment = Alignment::Justify;
            hold(ParagraphProperty::Distribution, true, DiagnosticCode::DistributedAlignment, start);
            break;
        default:
            report(DiagnosticCode::UnknownParagraphCode, start);
            break;
        }
    }

    void readSpacing(std::size_t start) {
        ParagraphFormat& format = m_state.format;
        format.lineSpacingKind = LineSpacingKind::Default;
        if (m_cursor.skip(L'm')) {
            format.lineSpacingKind = LineSpacingKind::Multiple;
        } else if (m_cursor.skip(L'e')) {
            format.lineSpacingKind = LineSpacingKind::Exactly;
        } else if (m_cursor.skip(L'a')) {
            format.lineSpacingKind = LineSpacingKind::AtLeast;
        }
        const float value = readValue();
        if (format.lineSpacingKind == LineSpacingKind::Default || value <= 0.0F) {
            format.lineSpacingKind = LineSpacingKind::Default;
            format.lineSpacing = 0.0F;
            m_state.codes[ParagraphProperty::LineSpacing] = 0;
            return;
        }
        format.lineSpacing = format.lineSpacingKind == LineSpacingKind::Multiple ? value : inDrawingUnits(value);
        hold(ParagraphProperty::LineSpacing, true, DiagnosticCode::ParagraphSpacing, start);
    }

    bool readTabStop() {
        // A letter belongs to the list only with a number behind it: `r4` is a
        // stop here, `q` begins the next property.
        ContentCursor ahead = m_cursor;
        TabStop stop;
        if (ahead.skip(L'c')) {
            stop.kind = TabStopKind::Center;
        } else if (ahead.skip(L'r')) {
            stop.kind = TabStopKind::Right;
        }
        const std::optional<float> position = ahead.readNumber();
        if (!position) {
            return false;
        }
        m_cursor = ahead;
        if (m_state.format.tabStops.size() < MOST_TAB_STOPS) {
            stop.position = inDrawingUnits(*position);
            m_state.format.tabStops.push_back(stop);
        }
        return true;
    }

    void readTabStops(std::size_t start) {
        m_state.format.tabStops.clear();
        m_state.codes[ParagraphProperty::TabStops] = 0;
        if (m_cursor.skip(L'*') || m_cursor.skip(L'z')) {
            return;
        }
        while (readTabStop()) {
            ContentCursor ahead = m_cursor;
            if (ahead.skip(L',') && !ahead.atEnd()) {
                m_cursor = ahead;
            }
        }
        hold(ParagraphProperty::TabStops, !m_state.format.tabStops.empty(), DiagnosticCode::TabStops, start);
    }

    void readProperty() {
        const std::size_t start = m_cursor.position();
        const wchar_t letter = *m_cursor.peek();
        m_cursor.advance(1);
        ParagraphFormat& format = m_state.format;
        switch (letter) {
        case L',':
        case L'x': // Marks properties as the paragraph's own.
            break;
        case L'i':
            readLength(format.firstLineIndent, ParagraphProperty::FirstLineIndent, DiagnosticCode::ParagraphIndent,
                       start);
            break;
        case L'l':
            readLength(format.leftIndent, ParagraphProperty::LeftIndent, DiagnosticCode::ParagraphIndent, start);
            break;
        case L'r':
            readLength(format.rightIndent, ParagraphProperty::RightIndent, DiagnosticCode::ParagraphIndent, start);
            break;
        case L'b':
            readLength(format.spaceBefore, ParagraphProperty::SpaceBefore, DiagnosticCode::ParagraphSpacing, start);
            break;
        case L'a':
            readLength(format.spaceAfter, ParagraphProperty::SpaceAfter, DiagnosticCode::ParagraphSpacing, start);
            break;
        case L'q':
            readAlignment(start);
            break;
        case L's':
            readSpacing(start);
            break;
        case L't':
            readTabStops(start);
            break;
        default:
            skipValue();
            report(DiagnosticCode::UnknownParagraphCode, start);
            break;
        }
    }

    void skipValue() {
        while (m_cursor.peek() && *m_cursor.peek() != L',') {
            m_cursor.advance(1);
        }
    }

    ContentCursor m_cursor;
    std::size_t m_position;
    const Defaults& m_defaults;
    ParagraphState& m_state;
    UnmetCodes& m_unmet;
    std::vector<ParagraphFinding>& m_findings;
};

} // namespace

bool looksLikeParagraphCode(std::wstring_view argument) {
    return std::all_of(argument.begin(), argument.end(), [](wchar_t unit) {
        const wchar_t lower = lowerAscii(unit);
        return isDigit(unit) || (lower >= L'a' && lower <= L'z') || unit == L',' || unit == L'*' || unit == L'.' ||
               unit == L'-' || unit == L'+';
    });
}

std::optional<float> evenTabStopWidth(const std::vector<TabStop>& tabStops) {
    if (tabStops.empty() || !(tabStops.front().position > 0.0F)) {
        return std::nullopt;
    }
    const float width = tabStops.front().position;
    float expected = width;
    for (const TabStop& stop : tabStops) {
        // Programs write positions with as few as four digits.
        if (stop.kind != TabStopKind::Left || std::abs(stop.position - expected) > 1e-3F * width) {
            return std::nullopt;
        }
        expected += width;
    }
    return width;
}

void applyParagraphCode(std::wstring_view argument, std::size_t position, const Defaults& defaults,
                        ParagraphState& state, UnmetCodes& unmet, std::vector<ParagraphFinding>& findings) {
    ParagraphCodeReader(argument, position, defaults, state, unmet, findings).read();
}

} // namespace mtext
