#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ParagraphCode.h"
#include <mtext/MText.h>

namespace mtext {

/// How a run looks, with its family as a number that DocumentBuilder gave out:
/// small enough to be copied for every group of a content.
struct TextStyle {
    std::uint32_t family = 0;
    float capSize = 0.0F;
    std::uint32_t color = 0;
    render::SRichTextFontStyle fontStyle;

    friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// Collects text into paragraphs and these into a document. Neighbouring text
/// of one style becomes one token.
class DocumentBuilder {
public:
    explicit DocumentBuilder(const Defaults& defaults) : m_defaults(defaults) {}

    /// The number of a family; the same for the same name.
    std::uint32_t family(const std::wstring& name);

    /// Adds to the current paragraph. `text` holds no line breaks.
    void append(std::wstring_view text, const TextStyle& style);

    /// Adds text that must stay apart from digits beside it, such as a fraction
    /// behind a whole number, which it would otherwise seem to be part of.
    void appendApart(std::wstring_view text, const TextStyle& style);

    /// Whether the current paragraph has no text yet.
    bool atParagraphStart() const { return m_tokens.empty(); }

    /// What holds for the current paragraph from now on.
    void setParagraph(const ParagraphState& state) { m_paragraph = state; }
    const ParagraphState& paragraph() const { return m_paragraph; }

    /// Ends the current paragraph. `style` is that of an empty line, `next`
    /// what the new paragraph begins with.
    void breakParagraph(const TextStyle& style, const ParagraphState& next, bool startsColumn);

    /// Ends the last paragraph and gives the document and the formats.
    Result finish(const TextStyle& style);

private:
    void endParagraph(const TextStyle& style);
    render::SRichTextToken makeToken(const TextStyle& style) const;
    float tabStopWidth() const;

    const Defaults& m_defaults;
    std::vector<std::wstring> m_families;
    std::unordered_map<std::wstring, std::uint32_t> m_familyNumbers;
    std::vector<render::SRichTextToken> m_tokens;
    TextStyle m_tokenStyle;
    bool m_keepApart = false;
    ParagraphState m_paragraph;
    bool m_startsColumn = false;
    std::vector<render::CRichTextParagraph> m_paragraphs;
    std::vector<ParagraphFormat> m_formats;
};

} // namespace mtext
