#include <gtest/gtest.h>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

TEST(Document, AnEmptyContentIsOneParagraphWithOneEmptyToken) {
    const Result result = parse(L"", sampleDefaults());
    const auto list = paragraphs(result);
    ASSERT_EQ(list.size(), 1U);
    ASSERT_EQ(list[0].tokens.size(), 1U);
    EXPECT_EQ(list[0].tokens[0].text, L"");
    EXPECT_EQ(list[0].tokens[0].fontFamily, L"Style Font");
    EXPECT_EQ(list[0].tokens[0].fontCapSize, 2.5F);
    EXPECT_EQ(result.formats.size(), 1U);
}

TEST(Document, TakesItsDefaultsFromTheEntity) {
    Defaults defaults = sampleDefaults();
    defaults.bold = true;
    defaults.italic = true;
    defaults.underline = true;
    defaults.alignment = render::eRichTextParagraphAlignment::Right;
    defaults.verticalAlignment = render::eRichTextParagraphVerticalAlignment::Bottom;
    defaults.noWrap = true;
    defaults.tabStopWidth = 12.5F;
    for (const Result& result : {parse(L"a\\Pb", defaults), parseText(L"a", defaults)}) {
        EXPECT_EQ(result.document.tabStopWidth, 12.5F);
        for (const render::CRichTextParagraph& paragraph : paragraphs(result)) {
            EXPECT_EQ(paragraph.alignment, render::eRichTextParagraphAlignment::Right);
            EXPECT_EQ(paragraph.verticalAlignment, render::eRichTextParagraphVerticalAlignment::Bottom);
            EXPECT_TRUE(paragraph.noWrap);
            EXPECT_EQ(paragraph.tokens[0].fontStyle, (render::SRichTextFontStyle{true, true, true}));
            EXPECT_EQ(paragraph.tokens[0].color, 0xFF112233U);
        }
    }
}

TEST(Document, ABreakEndsAParagraphAlsoAtTheEnd) {
    EXPECT_EQ(visible(L"a\\Pb"), L"a\nb");
    EXPECT_EQ(visible(L"a\\P"), L"a\n");
    EXPECT_EQ(visible(L"\\P\\P"), L"\n\n");
}

TEST(Document, AnEmptyLineCarriesTheStyleThatHoldsThere) {
    const auto list = paragraphs(parse(L"a\\P{\\fTimes;\\H2x;\\P}\\Pb", sampleDefaults()));
    ASSERT_EQ(list.size(), 4U);
    ASSERT_EQ(list[1].tokens.size(), 1U);
    EXPECT_EQ(list[1].tokens[0].text, L"");
    EXPECT_EQ(list[1].tokens[0].fontFamily, L"Times");
    EXPECT_EQ(list[1].tokens[0].fontCapSize, 5.0F);
    EXPECT_EQ(list[2].tokens[0].fontFamily, L"Style Font");
}

TEST(Document, NeighbouringTextOfOneStyleIsOneToken) {
    const auto runs = tokens(parse(L"a{b}\\C256;c\\L\\ld%%d\\~\\{e{\\fStyle Font;f}", sampleDefaults()));
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].text, L"abcd\u00B0\u00A0{ef");
}

TEST(Document, CodesWithoutTextLeaveNoToken) {
    const auto list = paragraphs(parse(L"a\\C1;\\C2;\\H3;\\Pb", sampleDefaults()));
    EXPECT_EQ(list[0].tokens.size(), 1U);
}

TEST(Document, HasOneFormatPerParagraph) {
    const Result result = parse(L"a\\P\\pi1;b\\P\\Nc^Jd", sampleDefaults());
    EXPECT_EQ(result.formats.size(), result.document.paragraphs.size());
}

TEST(Document, AColumnBreakBeginsAParagraphThatStartsAColumn) {
    const Result result = parse(L"a\\N\\pqc;b\\Pc", sampleDefaults());
    EXPECT_EQ(plainText(result.document), L"a\nb\nc");
    ASSERT_EQ(result.formats.size(), 3U);
    EXPECT_FALSE(result.formats[0].startsColumn);
    EXPECT_TRUE(result.formats[1].startsColumn);
    EXPECT_FALSE(result.formats[2].startsColumn);
    EXPECT_EQ(codes(result), std::vector{DiagnosticCode::ColumnBreak});
}

std::wstring repeated(std::wstring_view piece, std::size_t size) {
    std::wstring content;
    while (content.size() < size) {
        content += piece;
    }
    return content;
}

TEST(Document, AMillionCharactersInOneParagraphAreRead) {
    const std::size_t size = 1'000'000;
    EXPECT_EQ(visible(repeated(L"x", size)).size(), size);
}

TEST(Document, AHundredThousandParagraphsAreRead) {
    EXPECT_EQ(parse(repeated(L"\\P", 200'000), sampleDefaults()).document.paragraphs.size(), 100'001U);
}

// Each piece looks for an end that is far away or missing: this would take
// minutes if it were looked for once per piece.
TEST(Document, UnfinishedCodesByTheThousandsAreRead) {
    const std::size_t size = 100'000;
    for (const std::wstring_view piece :
         {L"{", L"}", L"\\f", L"\\fa", L"\\S", L"\\p", L"%<\\", L"%<\\a>%", L"\\H", L"\\H1", L"\\U+", L"\\f\\U+", L"^",
          L"%%", L"\\S\\{", L"{\\fA|b1;x}", L"\\pt1,2,3,4;\\P"}) {
        const Result result = parse(repeated(piece, size), sampleDefaults());
        EXPECT_EQ(result.formats.size(), result.document.paragraphs.size());
    }
}

} // namespace
} // namespace mtext::testing
