#include <mtext/Diagnostics.h>

#include <array>

namespace mtext {

namespace {

struct Entry {
    DiagnosticCode code;
    std::string_view name;
    std::string_view description;
};

constexpr std::array ENTRIES{
    Entry{DiagnosticCode::Overline, "overline", "text set without its overline"},
    Entry{DiagnosticCode::Strikethrough, "strikethrough", "text set without its strikethrough"},
    Entry{DiagnosticCode::StackedText, "stacked-text", "stacked fraction or tolerance written in one line"},
    Entry{DiagnosticCode::InlineAlignment, "inline-alignment", "vertical alignment within a line ignored"},
    Entry{DiagnosticCode::ObliqueAngle, "oblique-angle", "oblique angle ignored"},
    Entry{DiagnosticCode::Tracking, "tracking", "character spacing ignored"},
    Entry{DiagnosticCode::WidthFactor, "width-factor", "width factor ignored"},
    Entry{DiagnosticCode::ColumnBreak, "column-break", "column break turned into a new paragraph"},
    Entry{DiagnosticCode::DimensionLineBreak, "dimension-line-break", "dimension line turned into a new paragraph"},
    Entry{DiagnosticCode::ParagraphIndent, "paragraph-indent", "paragraph indents not laid out"},
    Entry{DiagnosticCode::TabStops, "tab-stops", "tab stops replaced by even ones"},
    Entry{DiagnosticCode::ParagraphSpacing, "paragraph-spacing", "paragraph and line spacing not laid out"},
    Entry{DiagnosticCode::DistributedAlignment, "distributed-alignment", "distributed paragraph justified instead"},
    Entry{DiagnosticCode::BigFont, "big-font", "second font for Asian characters not asked for"},
    Entry{DiagnosticCode::Field, "field", "field shown as its code because its value is unknown"},
    Entry{DiagnosticCode::UndecodableCharacter, "undecodable-character",
          "character of a code page could not be read and is shown as U+FFFD"},
    Entry{DiagnosticCode::ControlCharacter, "control-character", "control character has no meaning in text"},
    Entry{DiagnosticCode::UnknownCode, "unknown-code", "unknown code kept as text"},
    Entry{DiagnosticCode::UnknownParagraphCode, "unknown-paragraph-code", "unknown paragraph property ignored"},
    Entry{DiagnosticCode::MalformedCode, "malformed-code", "code with a missing or senseless argument has no effect"},
    Entry{DiagnosticCode::UnopenedGroup, "unopened-group", "closing brace without an opening one"},
    Entry{DiagnosticCode::UnclosedGroup, "unclosed-group", "opening brace without a closing one"},
};

const Entry& entry(DiagnosticCode code) {
    for (const Entry& candidate : ENTRIES) {
        if (candidate.code == code) {
            return candidate;
        }
    }
    // A value outside the enumeration can only come from a cast.
    static constexpr Entry outside{DiagnosticCode::UnknownCode, "unknown-diagnostic", "unknown diagnostic"};
    return outside;
}

} // namespace

std::string_view diagnosticName(DiagnosticCode code) {
    return entry(code).name;
}

std::string_view diagnosticDescription(DiagnosticCode code) {
    return entry(code).description;
}

} // namespace mtext
