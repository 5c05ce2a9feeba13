#include <render/RichTextDocument.h>

#include <cstddef>
#include <iterator>
#include <utility>

namespace render {

namespace {

using Paragraphs = common::OrderedContainer<CRichTextParagraph>;

constexpr std::uint32_t opaqueBlack = 0xFF000000;

/// Fills `bytes` with the last bytes of `number`, most significant first.
template <class Bytes>
void writeBigEndian(std::uint64_t number, Bytes& bytes) {
    for (auto byte = std::rbegin(bytes); byte != std::rend(bytes); ++byte) {
        *byte = static_cast<std::uint8_t>(number & 0xFF);
        number >>= 8;
    }
}

/// A key that sorts by `number`, which starts at 1: none is nil.
common::UUID keyOf(std::uint64_t number) {
    common::UUID key;
    writeBigEndian(number, key.data4);
    return key;
}

/// The digits needed so that every place from 1 to `count` has equally many.
std::size_t digitsFor(std::uint64_t count) {
    std::size_t digits = 1;
    while (digits < sizeof(count) && count >> (8 * digits) != 0) {
        ++digits;
    }
    return digits;
}

} // namespace

SRichTextToken makeToken(std::wstring text, std::wstring fontFamily, float fontCapSize, SRichTextFontStyle fontStyle) {
    fontStyle.underline = false;
    return {std::move(text), std::move(fontFamily), fontCapSize, opaqueBlack, fontStyle};
}

CRichTextDocument makeSingleParagraphDocument(std::wstring text, std::wstring fontFamily, float fontCapSize,
                                              SRichTextFontStyle fontStyle) {
    CRichTextParagraph paragraph;
    paragraph.tokens.push_back(makeToken(std::move(text), std::move(fontFamily), fontCapSize, fontStyle));
    paragraph.alignment = eRichTextParagraphAlignment::Left;
    paragraph.verticalAlignment = eRichTextParagraphVerticalAlignment::Top;

    Paragraphs::Items items;
    items.emplace(common::UUID(), std::move(paragraph));
    Paragraphs::Positions positions;
    positions.emplace(common::UUID(), common::CFractionalIndex::empty());

    CRichTextDocument document;
    document.paragraphs = Paragraphs(std::move(items), std::move(positions));
    return document;
}

CRichTextDocument makeDocument(std::vector<CRichTextParagraph> paragraphs) {
    const std::size_t digitCount = digitsFor(paragraphs.size());
    Paragraphs::Items items;
    Paragraphs::Positions positions;
    items.reserve(paragraphs.size());
    positions.reserve(paragraphs.size());

    std::uint64_t number = 0;
    for (CRichTextParagraph& paragraph : paragraphs) {
        ++number;
        std::vector<std::uint8_t> digits(digitCount);
        writeBigEndian(number, digits);
        // Keys ascend, so each goes to the end.
        items.emplace_hint(items.end(), keyOf(number), std::move(paragraph));
        positions.emplace_hint(positions.end(), keyOf(number), common::CFractionalIndex(std::move(digits)));
    }

    CRichTextDocument document;
    document.paragraphs = Paragraphs(std::move(items), std::move(positions));
    return document;
}

} // namespace render
