#pragma once

#include <Common/FontEngineExport.h>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Diagnostics.h"
#include <render/RichTextDocument.h>

/// Content strings of drawings' text entities, read into rich text documents.
///
/// Text is UTF-16 in std::wstring, one unit per element, on every platform.
/// All functions are pure: any number of threads may call them at once, and
/// results own everything they hold. None throws for anything content can say;
/// only memory can run out. Time and memory are linear in the content's length.
namespace mtext {

/// Turns `bytes` of a Windows code page (1252, 932, 1361, ...) into UTF-16.
/// Returns nothing for bytes that the page does not define. This library brings
/// no code-page tables: whoever reads the drawing has them already.
using ByteDecoder = std::function<std::optional<std::wstring>(std::string_view bytes, unsigned codePage)>;

/// A font as a `\f` or `\F` code asks for it, before anybody looked for it.
struct FontRequest {
    std::wstring name;    ///< Family or font file, as written, blanks at its ends removed.
    std::wstring bigFont; ///< Second font file, after the comma; empty mostly.
    bool bold = false;
    bool italic = false;
    std::optional<unsigned> charset; ///< `c`: Windows character set, 204 for Cyrillic.
    std::optional<unsigned> pitch;   ///< `p`: Windows pitch and family.
    bool shapeFont = false;          ///< Names compiled shape files (.shx), which hold strokes, not outlines.
};

/// Gives the family name that the document shall ask for. Called once for each
/// different font code of a content, in reading order.
using FontResolver = std::function<std::wstring(const FontRequest&)>;

/// What holds where the content says nothing: the entity's own properties.
struct Defaults {
    std::wstring fontFamily;          ///< Family of the text style.
    float capSize = 1.0F;             ///< Height of capitals, in the drawing's units; unit of every length in `\p`.
    std::uint32_t color = 0xFF000000; ///< ARGB of the entity; also what ByLayer and ByBlock stand for.
    std::uint32_t foreground = 0xFF000000; ///< ARGB of colour 7, which is dark on paper and light on a dark screen.
    bool bold = false;
    bool italic = false;
    bool underline = false;
    render::eRichTextParagraphAlignment alignment = render::eRichTextParagraphAlignment::Default;
    render::eRichTextParagraphVerticalAlignment verticalAlignment =
        render::eRichTextParagraphVerticalAlignment::Default;
    bool noWrap = false;
    bool shapeFont = false;     ///< The style's font is a shape file: `%%127` to `%%129` are its drafting symbols.
    float tabStopWidth = 40.0F; ///< Taken over into the document unless the content's own tab stops are even.
    unsigned codePage = 1252;   ///< The drawing's code page, for `%%nnn` from 128 on.
    ByteDecoder decodeBytes;    ///< May be empty: then `\M+nXXXX` comes out as U+FFFD.
    FontResolver resolveFont;   ///< May be empty: then a font's name is used as written.
};

enum class TabStopKind : std::uint8_t { Left, Center, Right };

struct TabStop {
    float position = 0.0F; ///< From the paragraph's left edge, in the drawing's units.
    TabStopKind kind = TabStopKind::Left;
};

enum class LineSpacingKind : std::uint8_t {
    Default,  ///< As the entity says.
    Multiple, ///< `sm`: times the natural distance.
    Exactly,  ///< `se`: a distance in the drawing's units.
    AtLeast,  ///< `sa`: a distance in the drawing's units, or the natural one if that is larger.
};

/// What `\p` says of a paragraph and the document model cannot hold. Lengths
/// are in the drawing's units (the content gives them in cap heights).
struct ParagraphFormat {
    float firstLineIndent = 0.0F; ///< Of the first line, beside leftIndent; negative for a hanging first line.
    float leftIndent = 0.0F;
    float rightIndent = 0.0F;
    float spaceBefore = 0.0F;
    float spaceAfter = 0.0F;
    LineSpacingKind lineSpacingKind = LineSpacingKind::Default;
    float lineSpacing = 0.0F;
    std::vector<TabStop> tabStops; ///< In the order written, 64 at most.
    bool startsColumn = false;     ///< The paragraph follows a column break.
};

struct Result {
    render::CRichTextDocument document;
    std::vector<ParagraphFormat> formats; ///< One per paragraph of the document, in its order.
    std::vector<Diagnostic> diagnostics;  ///< In the order of their positions.
};

/// Reads one whole MTEXT content string: chunks joined, bytes already decoded.
///
/// The document has at least one paragraph and every paragraph at least one
/// token; an empty line is a token without text in the style that holds there.
/// Neighbouring text of one style is one token. Characters that form no valid
/// code are text. Codes with a letter the reader does not know keep their
/// characters and are reported. Paragraph properties belong to the paragraph in
/// which they were last given, the end of a group restores them for the next.
FONTENGINE_MTEXT_API Result parse(std::wstring_view content, const Defaults& defaults);

/// Reads the string of a TEXT, ATTRIB or ATTDEF into a document of one
/// paragraph. Only `%%` codes, caret codes, `\U+XXXX` and `\M+nXXXX` mean
/// something there; a backslash or a brace is a character. A line break, which
/// such text cannot have, becomes a blank.
FONTENGINE_MTEXT_API Result parseText(std::wstring_view content, const Defaults& defaults);

/// The characters a reader sees, paragraphs separated by `\n`.
FONTENGINE_MTEXT_API std::wstring plainText(const render::CRichTextDocument& document);

/// ARGB, always opaque, of a colour number of a drawing: 1 to 9 the named
/// colours, 10 to 249 the wheel (hue in steps of 15 degrees, five levels of
/// 255, 165.75, 127.5, 76.5 and 38.25, odd numbers at half saturation), 250 to
/// 255 greys from 51 to 255 in even steps; fractions are cut. 7 gives
/// `foreground`; 0, 256 and what is no colour number give `inherited`.
FONTENGINE_MTEXT_API std::uint32_t argbFromColorIndex(std::int32_t index, std::uint32_t foreground,
                                                      std::uint32_t inherited);

} // namespace mtext
