#include <render/RichTextDocument.h>

#include <boost/functional/hash.hpp>

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cstdint>
#include <limits>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace render;

CRichTextDocument sample() {
    CRichTextParagraph first;
    first.tokens = {{L"Ground floor ", L"DejaVu Sans", 2.5F, 0xFF0000FF, {true, false, true}},
                    {L"1:50", L"Liberation Serif", 1.8F, 0, {false, true, false}}};
    first.alignment = eRichTextParagraphAlignment::Center;
    CRichTextParagraph second;
    second.tokens = {{L"", L"DejaVu Sans", 0.0F, 0, {}}, {L"\xD83D\xDE00\x3A9", L"", -0.0F, 0, {}}};
    CRichTextDocument document = makeDocument({first, second});
    document.tabStopWidth = 12.5F;
    return document;
}

TEST(DocumentHash, WithoutParagraphsItDependsOnTheTabStopWidthAlone) {
    CRichTextDocument document;
    document.tabStopWidth = 0.0F;
    EXPECT_EQ(hashDocument(document), 0xe6546b64U);
    document.tabStopWidth = -0.0F;
    EXPECT_EQ(hashDocument(document), 0xe6546b64U);
    document.tabStopWidth = 40.0F;
    EXPECT_EQ(hashDocument(document), 0x8aed2a4b50dfdd5bU);
}

TEST(DocumentHash, HasTheValueThatTheFormulasGive) {
    // Computed apart from this code, in Python's integers, from the formulas.
    EXPECT_EQ(hashDocument(sample()), 0x01cd9af7446c7202U);
    EXPECT_EQ(hashDocument(makeSingleParagraphDocument(L"", L"", 0.0F, {})), 0x8fcdc4050def1b5bU);
}

#if ULONG_MAX > 0xFFFFFFFF
// Where Boost has its 64-bit combining.
TEST(DocumentHash, IsTheOneThatBoostsPrimitivesGive) {
    const auto hashOfText = [](const std::wstring& text) {
        const std::vector<std::uint64_t> units(text.begin(), text.end());
        return boost::hash_range(units.begin(), units.end());
    };
    const CRichTextDocument document = sample();
    std::size_t seed = 0;
    boost::hash_combine(seed, document.tabStopWidth);
    for (const int paragraph : {0, 1}) {
        for (const SRichTextToken& token : document.paragraphs.at(paragraph).tokens) {
            boost::hash_combine(seed, hashOfText(token.text));
            boost::hash_combine(seed, token.fontCapSize);
            boost::hash_combine(seed, hashOfText(token.fontFamily));
            boost::hash_combine(seed, token.fontStyle.bold);
            boost::hash_combine(seed, token.fontStyle.italic);
            boost::hash_combine(seed, token.fontStyle.underline);
        }
    }
    EXPECT_EQ(hashDocument(document), seed);
}
#endif

TEST(DocumentHash, DocumentsThatDifferOnlyInParagraphAlignmentOrColourHashAlike) {
    const SRichTextToken token = makeToken(L"text", L"DejaVu Sans", 2.5F, {});
    CRichTextParagraph plain;
    plain.tokens = {token};
    CRichTextParagraph other = plain;
    other.alignment = eRichTextParagraphAlignment::Right;
    other.verticalAlignment = eRichTextParagraphVerticalAlignment::Bottom;
    other.noWrap = true;
    other.id.data1 = 7;
    other.tokens[0].color = 0x00FF00;

    const CRichTextDocument document = makeDocument({plain});
    CRichTextDocument differing = makeDocument({other});
    differing.name = L"a name";
    differing.id.data1 = 9;
    EXPECT_EQ(hashDocument(document), hashDocument(differing));
}

TEST(DocumentHash, EverythingThatIsHashedChangesIt) {
    const SRichTextToken base = makeToken(L"text", L"DejaVu Sans", 2.5F, {});
    std::vector<SRichTextToken> variants(7, base);
    variants[1].text = L"Text";
    variants[2].fontFamily = L"DejaVu Serif";
    variants[3].fontCapSize = 2.6F;
    variants[4].fontStyle.bold = true;
    variants[5].fontStyle.italic = true;
    variants[6].fontStyle.underline = true;
    std::vector<std::uint64_t> hashes;
    for (const SRichTextToken& variant : variants) {
        CRichTextParagraph paragraph;
        paragraph.tokens = {variant};
        hashes.push_back(hashDocument(makeDocument({paragraph})));
    }
    for (std::size_t i = 0; i < hashes.size(); ++i) {
        for (std::size_t j = i + 1; j < hashes.size(); ++j) {
            EXPECT_NE(hashes[i], hashes[j]) << i << " and " << j;
        }
    }
}

TEST(DocumentHash, FollowsTheOrderOfReadingNotOfKeys) {
    CRichTextParagraph a;
    a.tokens = {makeToken(L"a", L"", 1.0F, {})};
    CRichTextParagraph b;
    b.tokens = {makeToken(L"b", L"", 1.0F, {})};

    using Paragraphs = common::OrderedContainer<CRichTextParagraph>;
    common::UUID low;
    common::UUID high;
    high.data1 = 1;
    CRichTextDocument crossed;
    crossed.paragraphs =
        Paragraphs(Paragraphs::Items{{low, b}, {high, a}},
                   Paragraphs::Positions{{low, common::CFractionalIndex({2})}, {high, common::CFractionalIndex({1})}});
    EXPECT_EQ(hashDocument(crossed), hashDocument(makeDocument({a, b})));
    EXPECT_NE(hashDocument(crossed), hashDocument(makeDocument({b, a})));
}

TEST(DocumentHash, TakesSizesThatAreNotNumbersByTheirBits) {
    // Computed like the values above, from the bits 7FC00000 and 7F800000.
    const float nan = std::bit_cast<float>(std::uint32_t{0x7FC00000});
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(hashDocument(makeSingleParagraphDocument(L"text", L"", nan, {})), 0x83e8515738e6985fU);
    EXPECT_EQ(hashDocument(makeSingleParagraphDocument(L"text", L"", infinity, {})), 0xe77ef13207ebcfbdU);
}

CRichTextDocument documentOf(const std::vector<std::vector<std::wstring>>& paragraphs) {
    std::vector<CRichTextParagraph> result;
    for (const std::vector<std::wstring>& texts : paragraphs) {
        CRichTextParagraph& paragraph = result.emplace_back();
        for (const std::wstring& text : texts) {
            paragraph.tokens.push_back(makeToken(text, L"DejaVu Sans", 10.0F, {}));
        }
    }
    return makeDocument(std::move(result));
}

TEST(DocumentHash, TakesNoNoticeOfWhereParagraphsEnd) {
    EXPECT_EQ(hashDocument(documentOf({{L"Room"}, {L"101"}})), hashDocument(documentOf({{L"Room", L"101"}})));
}

TEST(DocumentHashByParagraphs, IsTheDocumentHashForOneParagraphOrNone) {
    EXPECT_EQ(hashDocumentByParagraphs(documentOf({{L"Room", L"101"}})), hashDocument(documentOf({{L"Room", L"101"}})));
    EXPECT_EQ(hashDocumentByParagraphs(documentOf({})), hashDocument(documentOf({})));
}

TEST(DocumentHashByParagraphs, TellsWhereParagraphsEnd) {
    const std::set<std::uint64_t> hashes = {
        hashDocumentByParagraphs(documentOf({{L"a", L"b", L"c"}})),
        hashDocumentByParagraphs(documentOf({{L"a"}, {L"b", L"c"}})),
        hashDocumentByParagraphs(documentOf({{L"a", L"b"}, {L"c"}})),
        hashDocumentByParagraphs(documentOf({{L"a"}, {L"b"}, {L"c"}})),
    };
    EXPECT_EQ(hashes.size(), 4U);
}

TEST(DocumentHashByParagraphs, HasTheValueThatTheFormulasGive) {
    EXPECT_EQ(hashDocumentByParagraphs(sample()), 0x245e4774c0936b5aU);
}

} // namespace
