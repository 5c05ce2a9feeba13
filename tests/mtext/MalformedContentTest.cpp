#include <gtest/gtest.h>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

using enum DiagnosticCode;

class Malformed : public ::testing::TestWithParam<ReadingCase> {};

TEST_P(Malformed, KeepsItsTextAndIsReported) {
    const Result result = parse(GetParam().content, sampleDefaults());
    EXPECT_EQ(plainText(result.document), GetParam().text);
    EXPECT_EQ(codes(result), GetParam().diagnostics);
}

INSTANTIATE_TEST_SUITE_P(
    Contents, Malformed,
    ::testing::Values(ReadingCase{L"end\\", L"end\\", {MalformedCode}}, ReadingCase{L"\\Zoo", L"\\Zoo", {UnknownCode}},
                      ReadingCase{L"\\Z12;abc", L"\\Z12;abc", {UnknownCode}},
                      ReadingCase{L"C:\\ dir", L"C:\\ dir", {UnknownCode}},
                      ReadingCase{L"3\\\"", L"3\\\"", {UnknownCode}}, ReadingCase{L"\\%%c", L"\\\u00D8", {UnknownCode}},
                      ReadingCase{L"a\\\nb", L"a\\\nb", {UnknownCode}},
                      ReadingCase{L"\\Habc;T", L"abc;T", {MalformedCode}}, ReadingCase{L"\\H1,5;x", L",5;x", {}},
                      ReadingCase{L"\\Cred;x", L"red;x", {MalformedCode}},
                      ReadingCase{L"\\C12345678901;x", L"12345678901;x", {MalformedCode}},
                      ReadingCase{L"\\H99999999999999999999999999999999999999999;x",
                                  L"99999999999999999999999999999999999999999;x",
                                  {MalformedCode}},
                      ReadingCase{L"a}b", L"ab", {UnopenedGroup}}, ReadingCase{L"a{b", L"ab", {UnclosedGroup}},
                      ReadingCase{L"}}{{", L"", {UnopenedGroup, UnopenedGroup, UnclosedGroup, UnclosedGroup}},
                      ReadingCase{L"{}", L"", {}}, ReadingCase{L"\\pthe wall; x", L"\\pthe wall; x", {MalformedCode}},
                      ReadingCase{L"\\pqc", L"\\pqc", {MalformedCode}}, ReadingCase{L"\\p", L"\\p", {MalformedCode}}));

TEST(MalformedContent, AnOverclosedGroupLeavesTheStyle) {
    const auto runs = tokens(parse(L"\\C1;a}b", sampleDefaults()));
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].text, L"ab");
    EXPECT_EQ(runs[0].color, 0xFFFF0000U);
}

TEST(MalformedContent, EveryBeginningOfAContentIsRead) {
    const std::wstring_view whole =
        L"{\\fArial|b1|i0|c134|p34|;\\H1.5x;\\pxi-3,l4,t4,c8;\\S+0.1^ -0.2;%%c\\U+00fc\\M+58CE4"
        L"\\C1;\\c255;%<\\AcVar %<\\x>%>%\\~\\\\\\{^I\\A1;}\\P\\o\\l";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        for (std::size_t start = 0; start + length <= whole.size(); start += 7) {
            const Result result = parse(whole.substr(start, length), sampleDefaults());
            EXPECT_EQ(result.formats.size(), result.document.paragraphs.size());
            for (const render::CRichTextParagraph& paragraph : paragraphs(result)) {
                EXPECT_FALSE(paragraph.tokens.empty());
            }
        }
    }
}

TEST(MalformedContent, UnitsThatAreNoTextComeThrough) {
    const std::wstring odd{wchar_t(0xDC00), L'a', wchar_t(0xD800), wchar_t(0xFFFF)};
    EXPECT_EQ(visible(odd), odd);
    EXPECT_EQ(visible(std::wstring(1, L'\0')), L" ");
}

} // namespace
} // namespace mtext::testing
