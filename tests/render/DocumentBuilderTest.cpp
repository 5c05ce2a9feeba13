#include <render/RichTextDocument.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace render;

TEST(SingleParagraphDocument, HoldsOneOpaqueBlackTokenThatIsNotUnderlined) {
    const CRichTextDocument document = makeSingleParagraphDocument(L"Room 1", L"DejaVu Sans", 3.5F, {true, true, true});
    ASSERT_EQ(document.paragraphs.size(), 1U);
    const CRichTextParagraph& paragraph = document.paragraphs.at(0);
    ASSERT_EQ(paragraph.tokens.size(), 1U);
    EXPECT_EQ(paragraph.tokens[0].text, L"Room 1");
    EXPECT_EQ(paragraph.tokens[0].fontFamily, L"DejaVu Sans");
    EXPECT_EQ(paragraph.tokens[0].fontCapSize, 3.5F);
    EXPECT_EQ(paragraph.tokens[0].color, 0xFF000000U);
    EXPECT_EQ(paragraph.tokens[0].fontStyle, (SRichTextFontStyle{true, true, false}));
}

TEST(SingleParagraphDocument, IsLeftTopWrappingWithNilIdentifiersAndTabStopsAt40) {
    const CRichTextDocument document = makeSingleParagraphDocument(L"a", L"b", 1.0F, {});
    const CRichTextParagraph& paragraph = document.paragraphs.at(0);
    EXPECT_EQ(paragraph.alignment, eRichTextParagraphAlignment::Left);
    EXPECT_EQ(paragraph.verticalAlignment, eRichTextParagraphVerticalAlignment::Top);
    EXPECT_FALSE(paragraph.noWrap);
    EXPECT_EQ(paragraph.id, common::UUID());
    EXPECT_TRUE(document.name.empty());
    EXPECT_EQ(document.id, common::UUID());
    EXPECT_EQ(document.tabStopWidth, 40.0F);
    EXPECT_EQ(document.paragraphs.orderedKeys(), std::vector<common::UUID>{common::UUID()});
}

TEST(SingleParagraphDocument, OfAnEmptyTextStillHasOneParagraphWithOneToken) {
    const CRichTextDocument document = makeSingleParagraphDocument(L"", L"DejaVu Sans", 1.0F, {});
    ASSERT_EQ(document.paragraphs.size(), 1U);
    ASSERT_EQ(document.paragraphs.at(0).tokens.size(), 1U);
    EXPECT_TRUE(document.paragraphs.at(0).tokens[0].text.empty());
}

TEST(Document, OfNoParagraphsIsEmpty) {
    EXPECT_EQ(makeDocument({}).paragraphs.size(), 0U);
}

TEST(Document, KeepsItsParagraphsInOrderWhateverTheirNumber) {
    // Around the places where the keys need one digit more.
    for (const std::uint32_t count : {1U, 2U, 255U, 256U, 257U, 65535U, 65536U, 100000U}) {
        std::vector<CRichTextParagraph> paragraphs(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            paragraphs[i].id.data1 = i;
        }
        const CRichTextDocument document = makeDocument(std::move(paragraphs));
        ASSERT_EQ(document.paragraphs.size(), count);
        for (std::uint32_t i = 0; i < count; ++i) {
            ASSERT_EQ(document.paragraphs.at(static_cast<std::int32_t>(i)).id.data1, i) << count;
        }
    }
}

TEST(Document, KeysItsParagraphsTheSameInEveryRunAndNeverNil) {
    const CRichTextDocument document = makeDocument(std::vector<CRichTextParagraph>(300));
    const CRichTextDocument again = makeDocument(std::vector<CRichTextParagraph>(300));
    EXPECT_EQ(document.paragraphs.orderedKeys(), again.paragraphs.orderedKeys());
    EXPECT_TRUE(common::UUID() < document.paragraphs.orderedKeys().front());
}

} // namespace
