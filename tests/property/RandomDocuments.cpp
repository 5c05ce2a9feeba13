#include "property/RandomDocuments.h"

#include <array>
#include <utility>
#include <vector>

#include <Common/Utf.h>

namespace property {

namespace {

constexpr std::array words{"note",
                           "AVATAR",
                           "office",
                           "3.50",
                           "1/100",
                           "(rev. B)",
                           "\u00D825",
                           "\u2300",
                           "well-known",
                           "co\u00ADop",
                           "a\u00A0b",
                           "Maße",
                           "Ελληνικά",
                           "чертёж",
                           "שלום",
                           "(בית 12)",
                           "السلام",
                           "١٢٣",
                           "لا",
                           "हिन्दी",
                           "ক্ষ",
                           "தமிழ்",
                           "ภาษาไทย",
                           "ខ្មែរ",
                           "မြန်မာ",
                           "བོད",
                           "漢字、図面。",
                           "カタカナ",
                           "평면도",
                           "\u1112\u1161\u11AB",
                           "e\u0301\u0323",
                           "q\u0308",
                           "\u2764\uFE0F",
                           "👩🏽",
                           "🇩🇪",
                           "\U0001D400",
                           "\u0378",
                           "\u200Fa\u200E",
                           "\u202Eabc\u202C",
                           "\u2067x\u2069",
                           "\u200B",
                           "\u2060",
                           "ሰላም",
                           "\u0915\u200D",
                           "क्\u200Cष",
                           "a\u0903",
                           "\u0301"};

constexpr std::array separators{" ",    " ",      " ",      " ",  "  ", "\t", "\n",
                                "\r\n", "\u2028", "\u2029", ", ", "",   "",   "\u200D"};

constexpr std::array families{L"DejaVu Sans",       L"DejaVu Serif",     L"Liberation Sans", L"Noto Sans",
                              L"Noto Naskh Arabic", L"Noto Sans CJK JP", L"not installed"};

constexpr std::array sizes{1.0F, 2.5F, 3.5F, 7.0F, 12.0F};

constexpr std::array verticalAlignments{
    render::eRichTextParagraphVerticalAlignment::Default, render::eRichTextParagraphVerticalAlignment::Top,
    render::eRichTextParagraphVerticalAlignment::Middle, render::eRichTextParagraphVerticalAlignment::Bottom};

constexpr std::array alignments{render::eRichTextParagraphAlignment::Default, render::eRichTextParagraphAlignment::Left,
                                render::eRichTextParagraphAlignment::Right, render::eRichTextParagraphAlignment::Center,
                                render::eRichTextParagraphAlignment::Justify};

} // namespace

std::wstring RandomDocuments::text(std::size_t maxPieces) {
    std::wstring text;
    // Most texts of drawings are short; every fourth is as long as it may be.
    for (std::size_t left = 1 + below(below(4) == 0 ? maxPieces : 2); left > 0; --left) {
        text += common::wideFromUtf8(words[below(words.size())]);
        text += common::wideFromUtf8(separators[below(separators.size())]);
        if (below(40) == 0) {
            text += static_cast<wchar_t>(0xD800 + below(0x800));
        }
    }
    return text;
}

render::CRichTextParagraph RandomDocuments::paragraph() {
    render::CRichTextParagraph paragraph;
    for (std::size_t left = 1 + below(3); left > 0; --left) {
        render::SRichTextToken token =
            render::makeToken(text(8), families[below(families.size())], sizes[below(sizes.size())], {});
        token.fontStyle = {below(4) == 0, below(4) == 0, below(4) == 0};
        paragraph.tokens.push_back(std::move(token));
    }
    paragraph.alignment = alignments[below(alignments.size())];
    paragraph.verticalAlignment = verticalAlignments[below(verticalAlignments.size())];
    paragraph.noWrap = below(8) == 0;
    return paragraph;
}

render::CRichTextDocument RandomDocuments::document() {
    std::vector<render::CRichTextParagraph> paragraphs(1 + below(4));
    for (render::CRichTextParagraph& paragraph : paragraphs) {
        paragraph = this->paragraph();
    }
    render::CRichTextDocument document = render::makeDocument(std::move(paragraphs));
    document.tabStopWidth = 5.0F * static_cast<float>(1 + below(10));
    return document;
}

std::wstring textOf(const render::CRichTextParagraph& paragraph) {
    std::wstring text;
    for (const render::SRichTextToken& token : paragraph.tokens) {
        text += token.text;
    }
    return text;
}

render::CRichTextDocument scaled(const render::CRichTextDocument& document, float factor) {
    std::vector<render::CRichTextParagraph> paragraphs;
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(document.paragraphs.size()); ++i) {
        paragraphs.push_back(document.paragraphs.at(i));
        for (render::SRichTextToken& token : paragraphs.back().tokens) {
            token.fontCapSize *= factor;
        }
    }
    render::CRichTextDocument larger = render::makeDocument(std::move(paragraphs));
    larger.tabStopWidth = document.tabStopWidth * factor;
    return larger;
}

} // namespace property
