#pragma once

#include <Common/FontEngineExport.h>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace mtext {

/// What a content string asked for and did not get, or got only in part. A code
/// that changes nothing is not among them: one that no text follows, or whose
/// text would look the same with it.
/// The text itself is never lost: each of these concerns its appearance, or
/// says that characters which look like a code were kept as text.
enum class DiagnosticCode : std::uint8_t {
    // Formatting that the document model has no room for.
    Overline,             ///< `\O`, `%%o`: the text is set without the line above it.
    Strikethrough,        ///< `\K`, `%%k`: the text is set without the line through it.
    StackedText,          ///< `\S`: a fraction or tolerance stands in one line, as `1/2`.
    InlineAlignment,      ///< `\A`: small text keeps the baseline of its line; where the paragraph's heights differ.
    ObliqueAngle,         ///< `\Q`: the text is set upright.
    Tracking,             ///< `\T`: the characters keep their natural distance.
    WidthFactor,          ///< `\W`: the characters keep their natural width.
    ColumnBreak,          ///< `\N`: a new column became a new paragraph.
    DimensionLineBreak,   ///< `\X`: the place of the dimension line became a new paragraph.
    ParagraphIndent,      ///< `\pi`, `\pl`, `\pr`: see ParagraphFormat.
    TabStops,             ///< `\pt`: tabs stand at even stops instead of these; see ParagraphFormat.
    ParagraphSpacing,     ///< `\pb`, `\pa`, `\ps`: see ParagraphFormat.
    DistributedAlignment, ///< `\pqd`: the paragraph is justified, its last line is not spread.
    BigFont,              ///< `\Fa.shx,b.shx`: the second font was not asked for.
    Field,                ///< `%<...>%`: the field's code stands for its value.

    // Characters that could not be read.
    UndecodableCharacter, ///< A code-page character without a decoder: U+FFFD.
    ControlCharacter,     ///< A control character that has no place in text.

    // Malformed content.
    UnknownCode,          ///< A code this reader does not know; its characters were kept.
    UnknownParagraphCode, ///< A letter inside `\p...;` that means nothing.
    MalformedCode,        ///< A known code with a missing, cut or senseless argument.
    UnopenedGroup,        ///< `}` without `{`; not shown.
    UnclosedGroup,        ///< `{` that the content's end closed.
};

/// One finding. `position` and `length` count UTF-16 units of the content that
/// was parsed; `text` is the content's text there, cut after 64 units.
struct Diagnostic {
    std::size_t position = 0;
    std::size_t length = 0;
    DiagnosticCode code = DiagnosticCode::UnknownCode;
    std::wstring text;
};

/// Stable name for files and filters, such as "stacked-text". Never empty.
FONTENGINE_MTEXT_API std::string_view diagnosticName(DiagnosticCode code);

/// One English sentence without a full stop that a person can act on, such as
/// "stacked fraction or tolerance written in one line". Never empty.
FONTENGINE_MTEXT_API std::string_view diagnosticDescription(DiagnosticCode code);

} // namespace mtext
