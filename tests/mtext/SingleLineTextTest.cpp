#include <gtest/gtest.h>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

using enum DiagnosticCode;

class SingleLine : public ::testing::TestWithParam<ReadingCase> {};

TEST_P(SingleLine, IsRead) {
    const Result result = parseText(GetParam().content, sampleDefaults());
    EXPECT_EQ(plainText(result.document), GetParam().text);
    EXPECT_EQ(codes(result), GetParam().diagnostics);
    EXPECT_EQ(result.document.paragraphs.size(), 1U);
    EXPECT_EQ(result.formats.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    Contents, SingleLine,
    ::testing::Values(ReadingCase{L"", L"", {}}, ReadingCase{L"Room 1", L"Room 1", {}},
                      ReadingCase{L"%%c20 %%p0.1 90%%d 50%%%", L"\u00D820 \u00B10.1 90\u00B0 50%", {}},
                      ReadingCase{L"%%u%%oRoom%%o%%u", L"Room", {Overline}},
                      ReadingCase{L"%%kRoom", L"Room", {Strikethrough}}, ReadingCase{L"%%065%%176", L"A\u00B0", {}},
                      ReadingCase{L"\\U+00fc\\U+2205123", L"\u00FC\u2205123", {}},
                      ReadingCase{L"\\M+58CE4", L"\uFFFD", {UndecodableCharacter}},
                      ReadingCase{L"x^ 2^Iy", L"x^2\ty", {}},
                      // What is a code elsewhere is text here.
                      ReadingCase{L"a\\Pb{c}\\H3;\\~\\\\", L"a\\Pb{c}\\H3;\\~\\\\", {}},
                      ReadingCase{L"C:\\U+dir\\P+\\", L"C:\\U+dir\\P+\\", {}}, ReadingCase{L"%<\\x>%", L"%<\\x>%", {}},
                      // A single line has no breaks.
                      ReadingCase{L"a^M^Jb", L"a b", {}}, ReadingCase{L"a\r\nb", L"a b", {}},
                      ReadingCase{L"a\x02z", L"a z", {ControlCharacter}}, ReadingCase{L"%%q", L"%%q", {UnknownCode}}));

TEST(SingleLineText, IsOneTokenForEachStretchOfUnderline) {
    const auto runs = tokens(parseText(L"a%%ub%%uc", sampleDefaults()));
    ASSERT_EQ(runs.size(), 3U);
    EXPECT_FALSE(runs[0].fontStyle.underline);
    EXPECT_TRUE(runs[1].fontStyle.underline);
    EXPECT_FALSE(runs[2].fontStyle.underline);
    EXPECT_EQ(tokens(parseText(L"", sampleDefaults())).size(), 1U);
}

} // namespace
} // namespace mtext::testing
