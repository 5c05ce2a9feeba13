#pragma once

#include <Common/FontEngineExport.h>
#include <Common/OrderedContainer.h> // brings UUID.h, a name that hosts may have too

#include <cstdint>
#include <string>
#include <vector>

/// The input of every layout and measurement: plain values that a host fills in and that are copied freely.
///
/// Text is UTF-16 in std::wstring, one code unit per element on every platform; positions and lengths count elements.
/// Lengths are in the document's own units, and the height of capital letters is the measure of a text's size.
namespace render {

/// How a run of text departs from the plain face of its family.
struct SRichTextFontStyle {
    bool bold = false;
    bool italic = false;
    bool underline = false;

    friend bool operator==(const SRichTextFontStyle&, const SRichTextFontStyle&) noexcept = default;
};

/// One run of uniformly styled text.
struct SRichTextToken {
    std::wstring text;
    /// The family name that is looked for among the fonts, matched exactly.
    std::wstring fontFamily;
    /// The height of capital letters.
    float fontCapSize = 0.0F;
    /// Passed on to the results as it is; nothing is read into it.
    std::uint32_t color = 0;
    SRichTextFontStyle fontStyle;
};

/// Where a paragraph's lines, and its anchor in a rectangle, lie from left to right. Any other value acts as Default.
enum class eRichTextParagraphAlignment : std::int32_t {
    Default = 0, ///< leading; anchored at the left edge
    Left = 1,    ///< leading; anchored at the left edge
    Right = 2,   ///< trailing; anchored at the right edge
    Center = 3,  ///< centred; anchored halfway
    Justify = 4, ///< justified; anchored at the left edge
};

/// Where a paragraph, and its anchor in a rectangle, lies from top to bottom. Any other value acts as Default.
enum class eRichTextParagraphVerticalAlignment : std::int32_t {
    Default = 0, ///< at the top edge (the greatest y)
    Top = 1,     ///< at the top edge
    Middle = 2,  ///< halfway
    Bottom = 3,  ///< at the bottom edge
};

/// Runs that are laid out together. Layout needs at least one token.
class CRichTextParagraph {
public:
    /// In reading order.
    std::vector<SRichTextToken> tokens;
    eRichTextParagraphAlignment alignment = eRichTextParagraphAlignment::Default;
    eRichTextParagraphVerticalAlignment verticalAlignment = eRichTextParagraphVerticalAlignment::Default;
    /// True: lines are never wrapped. False: words are wrapped at the layout's width.
    bool noWrap = false;
    /// For the host; never read here.
    common::UUID id;
};

/// Paragraphs from top to bottom, in the order of their fractional indices.
class CRichTextDocument {
public:
    /// For the host; never read here.
    std::wstring name;
    /// For the host; never read here.
    common::UUID id;
    common::OrderedContainer<CRichTextParagraph> paragraphs;
    /// The distance between tab stops.
    float tabStopWidth = 40.0F;
};

/// A part of a paragraph's concatenated text, in UTF-16 code units.
struct TextRange {
    std::uint32_t startPosition = 0;
    std::uint32_t length = 0;

    friend bool operator==(const TextRange&, const TextRange&) noexcept = default;
};

/// A 64-bit value over a document's tab stop width and, token by token in reading order, text, size, family and style.
/// Documents that differ in nothing else hash alike: in where paragraphs end, alignments, wrapping, colours, names or
/// identifiers. The same on every platform and in every run.
[[nodiscard]] FONTENGINE_API std::uint64_t hashDocument(const CRichTextDocument& document);

/// A 64-bit value over what a document's natural extent depends on: hashDocument and, where there is more than one
/// paragraph, how many tokens each of them has. For one paragraph it is hashDocument.
[[nodiscard]] FONTENGINE_API std::uint64_t hashDocumentByParagraphs(const CRichTextDocument& document);

/// An opaque black run (colour 0xFF000000), bold and italic as `fontStyle` says and never underlined.
[[nodiscard]] FONTENGINE_API SRichTextToken makeToken(std::wstring text, std::wstring fontFamily, float fontCapSize,
                                                      SRichTextFontStyle fontStyle);

/// A document of one paragraph (left, top, wrapping) that holds one such run, even for an empty text. All identifiers
/// are nil; the tab stop width is the default.
[[nodiscard]] FONTENGINE_API CRichTextDocument makeSingleParagraphDocument(std::wstring text, std::wstring fontFamily,
                                                                           float fontCapSize,
                                                                           SRichTextFontStyle fontStyle);

/// A document of these paragraphs from top to bottom. The keys that order them are made from their places, the same in
/// every run (a host that keeps documents keys its paragraphs with identifiers of its own; `id` stays as it is).
[[nodiscard]] FONTENGINE_API CRichTextDocument makeDocument(std::vector<CRichTextParagraph> paragraphs);

} // namespace render
