#pragma once

#include <cstdint>
#include <random>
#include <string>

#include <render/RichTextDocument.h>

namespace property {

/// Makes documents of many scripts, fonts and sizes. One seed gives the same documents on every machine.
class RandomDocuments {
public:
    explicit RandomDocuments(std::uint32_t seed) : m_random(seed) {}

    /// A number below `limit`.
    std::size_t below(std::size_t limit) { return m_random() % limit; }

    /// One to `maxPieces` words, spaces, tabs, newlines, marks, joiners, directed characters or lone surrogates.
    std::wstring text(std::size_t maxPieces);
    /// One to three tokens, never empty.
    render::CRichTextParagraph paragraph();
    /// One to four paragraphs.
    render::CRichTextDocument document();

private:
    std::mt19937 m_random;
};

/// What all tokens of a paragraph say.
std::wstring textOf(const render::CRichTextParagraph& paragraph);

/// The same document with every length multiplied.
render::CRichTextDocument scaled(const render::CRichTextDocument& document, float factor);

} // namespace property
