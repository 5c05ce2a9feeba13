#include <render/RichTextDocument.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using namespace render;

TEST(RichTextDocument, ADefaultTokenIsEmptyAndColourless) {
    const SRichTextToken token;
    EXPECT_TRUE(token.text.empty());
    EXPECT_TRUE(token.fontFamily.empty());
    EXPECT_EQ(token.fontCapSize, 0.0F);
    EXPECT_EQ(token.color, 0U);
    EXPECT_EQ(token.fontStyle, SRichTextFontStyle());
}

TEST(RichTextDocument, TheStyleIsThreeFlagsOfOneByteEach) {
    static_assert(sizeof(SRichTextFontStyle) == 3);
    EXPECT_NE((SRichTextFontStyle{true, false, false}), (SRichTextFontStyle{false, true, false}));
}

TEST(RichTextDocument, ADefaultParagraphWrapsAndIsAlignedByDefault) {
    const CRichTextParagraph paragraph;
    EXPECT_TRUE(paragraph.tokens.empty());
    EXPECT_EQ(paragraph.alignment, eRichTextParagraphAlignment::Default);
    EXPECT_EQ(paragraph.verticalAlignment, eRichTextParagraphVerticalAlignment::Default);
    EXPECT_FALSE(paragraph.noWrap);
    EXPECT_EQ(paragraph.id, common::UUID());
}

TEST(RichTextDocument, ADefaultDocumentHasNoParagraphsAndTabStopsAt40) {
    const CRichTextDocument document;
    EXPECT_TRUE(document.name.empty());
    EXPECT_EQ(document.id, common::UUID());
    EXPECT_EQ(document.paragraphs.size(), 0U);
    EXPECT_EQ(document.tabStopWidth, 40.0F);
}

TEST(RichTextDocument, TheAlignmentsHaveTheirNumbers) {
    static_assert(sizeof(eRichTextParagraphAlignment) == 4 && sizeof(eRichTextParagraphVerticalAlignment) == 4);
    EXPECT_EQ(static_cast<int>(eRichTextParagraphAlignment::Default), 0);
    EXPECT_EQ(static_cast<int>(eRichTextParagraphAlignment::Left), 1);
    EXPECT_EQ(static_cast<int>(eRichTextParagraphAlignment::Right), 2);
    EXPECT_EQ(static_cast<int>(eRichTextParagraphAlignment::Center), 3);
    EXPECT_EQ(static_cast<int>(eRichTextParagraphAlignment::Justify), 4);
    EXPECT_EQ(static_cast<int>(eRichTextParagraphVerticalAlignment::Default), 0);
    EXPECT_EQ(static_cast<int>(eRichTextParagraphVerticalAlignment::Top), 1);
    EXPECT_EQ(static_cast<int>(eRichTextParagraphVerticalAlignment::Middle), 2);
    EXPECT_EQ(static_cast<int>(eRichTextParagraphVerticalAlignment::Bottom), 3);
}

TEST(RichTextDocument, AskingForTheParagraphAfterTheLastRaisesOutOfRange) {
    const CRichTextDocument document = makeSingleParagraphDocument(L"text", L"DejaVu Sans", 2.5F, {});
    try {
        (void)document.paragraphs.at(static_cast<std::int32_t>(document.paragraphs.size()));
        FAIL();
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid vector subscript");
    }
}

TEST(RichTextDocument, CopiesAreIndependent) {
    CRichTextDocument document = makeSingleParagraphDocument(L"text", L"DejaVu Sans", 2.5F, {});
    const CRichTextDocument copy = document;
    document = CRichTextDocument();
    ASSERT_EQ(copy.paragraphs.size(), 1U);
    EXPECT_EQ(copy.paragraphs.at(0).tokens[0].text, L"text");
    EXPECT_EQ(document.paragraphs.size(), 0U);
    static_assert(std::is_nothrow_move_constructible_v<CRichTextDocument>);
}

} // namespace
