#include <gtest/gtest.h>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

using enum DiagnosticCode;

class Stack : public ::testing::TestWithParam<ReadingCase> {};

TEST_P(Stack, CanBeReadInOneLine) {
    const Result result = parse(GetParam().content, sampleDefaults());
    EXPECT_EQ(plainText(result.document), GetParam().text);
    EXPECT_EQ(codes(result), GetParam().diagnostics);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, Stack,
    ::testing::Values(
        ReadingCase{L"\\S1/2;x", L"1/2x", {StackedText}}, ReadingCase{L"\\S1#2;x", L"1/2x", {StackedText}},
        ReadingCase{L"\\S+0.1^ -0.2;x", L"+0.1/-0.2x", {StackedText}},
        ReadingCase{L"\\S+0.1^-0.2;x", L"+0.1/-0.2x", {StackedText}}, ReadingCase{L"m\\S2^ ;", L"m2", {StackedText}},
        ReadingCase{L"m\\S2^;", L"m2", {StackedText}}, ReadingCase{L"H\\S^ 2;O", L"H2O", {StackedText}},
        ReadingCase{L"H\\S^2;O", L"H2O", {StackedText}}, ReadingCase{L"\\S12;x", L"12x", {StackedText}},
        ReadingCase{L"\\S;x", L"x", {}}, ReadingCase{L"\\S/2;x", L"/2x", {StackedText}},
        ReadingCase{L"\\S1/2/3;x", L"1/2/3x", {StackedText}}, ReadingCase{L"\\S1\\/2#3;x", L"1/2/3x", {StackedText}},
        ReadingCase{L"\\S1\\;/2;x", L"1;/2x", {StackedText}}, ReadingCase{L"\\S1 / 2;x", L"1 / 2x", {StackedText}},
        ReadingCase{L"\\S\\{1\\}/\\\\;", L"{1}/\\", {StackedText}},
        ReadingCase{L"\\S1\\~/2;", L"1\u00A0/2", {StackedText}}));

INSTANTIATE_TEST_SUITE_P(Characters, Stack,
                         ::testing::Values(ReadingCase{L"\\S%%c1/2;", L"\u00D81/2", {StackedText}},
                                           ReadingCase{L"\\S\\U+00d8/2;", L"\u00D8/2", {StackedText}},
                                           ReadingCase{L"\\S50%/%%u;", L"50%/%%u", {StackedText}},
                                           ReadingCase{
                                               L"\\S\\M+1889F/2;", L"\uFFFD/2", {StackedText, UndecodableCharacter}},
                                           ReadingCase{L"\\Sa\\U+000A/2;", L"a\n/2", {StackedText}}));

// A whole number and the fraction behind it must not become another number.
INSTANTIATE_TEST_SUITE_P(BesideDigits, Stack,
                         ::testing::Values(ReadingCase{L"7\\S1/2;\"", L"7\u00A01/2\"", {StackedText}},
                                           ReadingCase{L"7{\\H0.7x;\\S1#2;}\"", L"7\u00A01/2\"", {StackedText}},
                                           ReadingCase{L"\\S1/2;5", L"1/2\u00A05", {StackedText}},
                                           ReadingCase{L"7 \\S1/2; 5", L"7 1/2 5", {StackedText}},
                                           ReadingCase{L"7-\\S1/2;", L"7-1/2", {StackedText}},
                                           ReadingCase{L"20\\S+0.1^ -0.2;", L"20+0.1/-0.2", {StackedText}},
                                           ReadingCase{L"20\\S0^ -0.2;", L"20\u00A00/-0.2", {StackedText}},
                                           ReadingCase{L"\\S1/2;\\S1/3;", L"1/2\u00A01/3", {StackedText, StackedText}},
                                           ReadingCase{L"7\\P\\S1/2;\\P5", L"7\n1/2\n5", {StackedText}}));

INSTANTIATE_TEST_SUITE_P(Unterminated, Stack,
                         ::testing::Values(ReadingCase{L"\\S1/2", L"1/2", {MalformedCode}},
                                           ReadingCase{L"{\\S1/2}x;y", L"1/2x;y", {MalformedCode}},
                                           ReadingCase{L"\\S1/2\\Px;y", L"1/2\nx;y", {MalformedCode}},
                                           ReadingCase{L"\\S\\C1;1/2;", L"1/2;", {MalformedCode}},
                                           ReadingCase{L"\\S1/2\r\nx;", L"1/2\nx;", {MalformedCode}},
                                           ReadingCase{L"\\S1/\\", L"1/\\", {MalformedCode, MalformedCode}}));

TEST(StackedText, HasTheStyleThatHoldsThere) {
    const auto runs = tokens(parse(L"7{\\H0.5x;\\S1/2;}\"", sampleDefaults()));
    ASSERT_EQ(runs.size(), 3U);
    EXPECT_EQ(runs[1].text, L"\u00A01/2");
    EXPECT_EQ(runs[1].fontCapSize, 1.25F);
}

} // namespace
} // namespace mtext::testing
