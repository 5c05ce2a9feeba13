#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

using enum DiagnosticCode;

class CharacterCode : public ::testing::TestWithParam<ReadingCase> {};

TEST_P(CharacterCode, IsReadAsTheCharacterItStandsFor) {
    const Result result = parse(GetParam().content, sampleDefaults());
    EXPECT_EQ(plainText(result.document), GetParam().text);
    EXPECT_EQ(codes(result), GetParam().diagnostics);
}

INSTANTIATE_TEST_SUITE_P(Escapes, CharacterCode,
                         ::testing::Values(ReadingCase{L"a\\\\b", L"a\\b", {}}, ReadingCase{L"\\{a\\}", L"{a}", {}},
                                           ReadingCase{L"a\\~b", L"a\u00A0b", {}}, ReadingCase{L"\\\\P", L"\\P", {}},
                                           ReadingCase{L"\\\\\\P", L"\\\n", {}}));

INSTANTIATE_TEST_SUITE_P(Percent, CharacterCode,
                         ::testing::Values(ReadingCase{L"%%c20", L"\u00D820", {}}, ReadingCase{L"%%C", L"\u00D8", {}},
                                           ReadingCase{L"90%%d", L"90\u00B0", {}}, ReadingCase{L"%%D", L"\u00B0", {}},
                                           ReadingCase{L"%%p1", L"\u00B11", {}}, ReadingCase{L"%%P", L"\u00B1", {}},
                                           ReadingCase{L"50%%%", L"50%", {}}, ReadingCase{L"50%", L"50%", {}},
                                           ReadingCase{L"50%%", L"50%%", {}}, ReadingCase{L"50%% of", L"50%% of", {}},
                                           ReadingCase{L"%%065x", L"Ax", {}}, ReadingCase{L"%%0651", L"A1", {}},
                                           ReadingCase{L"%%176", L"\u00B0", {}}, ReadingCase{L"%%127", L"\u00B0", {}},
                                           ReadingCase{L"a%%009b", L"a\tb", {}}, ReadingCase{L"a%%010b", L"a\nb", {}},
                                           ReadingCase{L"%%z", L"%%z", {UnknownCode}},
                                           ReadingCase{L"%%65", L"%%65", {UnknownCode}},
                                           ReadingCase{L"%%300", L"%%300", {UnknownCode}},
                                           ReadingCase{L"%%001", L"%%001", {UnknownCode}}));

INSTANTIATE_TEST_SUITE_P(Caret, CharacterCode,
                         ::testing::Values(ReadingCase{L"a^Ib", L"a\tb", {}}, ReadingCase{L"a^Jb", L"a\nb", {}},
                                           ReadingCase{L"a^Mb", L"ab", {}}, ReadingCase{L"a^M^Jb", L"a\nb", {}},
                                           ReadingCase{L"x^ 2", L"x^2", {}}, ReadingCase{L"x^2", L"x^2", {}},
                                           ReadingCase{L"x^", L"x^", {}}, ReadingCase{L"x^\\Py", L"x^\ny", {}},
                                           ReadingCase{L"x^Ay", L"x^Ay", {ControlCharacter}}));

INSTANTIATE_TEST_SUITE_P(
    Unicode, CharacterCode,
    ::testing::Values(ReadingCase{L"\\U+00DC", L"\u00DC", {}}, ReadingCase{L"\\U+00dc", L"\u00DC", {}},
                      ReadingCase{L"\\u+00Fc", L"\u00FC", {}}, ReadingCase{L"\\U+2205123", L"\u2205123", {}},
                      ReadingCase{L"\\U+2205ABC", L"\u2205ABC", {}}, ReadingCase{L"\\U+005CP", L"\\P", {}},
                      ReadingCase{L"\\U+007B", L"{", {}}, ReadingCase{L"a\\U+000Ab", L"a\nb", {}},
                      ReadingCase{L"\\U+22", L"\\U+22", {MalformedCode}},
                      ReadingCase{L"\\U+00G0", L"\\U+00G0", {MalformedCode}},
                      ReadingCase{L"\\U", L"\\U", {UnknownCode}}, ReadingCase{L"\\Um", L"\\Um", {UnknownCode}}));

INSTANTIATE_TEST_SUITE_P(LineBreaks, CharacterCode,
                         ::testing::Values(ReadingCase{L"a\r\nb", L"a\nb", {}}, ReadingCase{L"a\nb", L"a\nb", {}},
                                           ReadingCase{L"a\rb", L"ab", {}}, ReadingCase{L"a\tb", L"a\tb", {}},
                                           ReadingCase{L"a\x01z", L"a z", {ControlCharacter}}));

TEST(UnicodeCode, TwoSurrogatesWrittenOneByOneMakeOneCharacter) {
    const std::wstring text = visible(L"\\U+D83D\\U+DE00");
    EXPECT_EQ(text, (std::wstring{wchar_t(0xD83D), wchar_t(0xDE00)}));
}

TEST(UnicodeCode, ALoneSurrogateStaysAsItIs) {
    EXPECT_EQ(visible(L"\\U+D83Dx"), (std::wstring{wchar_t(0xD83D), L'x'}));
}

TEST(CodePageCode, WithoutADecoderTheTextAroundItStays) {
    const Result result = parse(L"a\\M+58CE4b", sampleDefaults());
    EXPECT_EQ(plainText(result.document), L"a\uFFFDb");
    EXPECT_EQ(codes(result), std::vector{UndecodableCharacter});
    EXPECT_EQ(result.diagnostics[0].text, L"\\M+58CE4");
}

TEST(CodePageCode, AsciiNeedsNoDecoder) {
    EXPECT_EQ(visible(L"\\M+10041"), L"A");
}

struct DecoderCall {
    std::string bytes;
    unsigned codePage;
    friend bool operator==(const DecoderCall&, const DecoderCall&) = default;
};

class CodePages : public ::testing::Test {
protected:
    CodePages() {
        m_defaults.decodeBytes = [this](std::string_view bytes, unsigned page) -> std::optional<std::wstring> {
            m_calls.push_back({std::string(bytes), page});
            return m_answer;
        };
    }

    Defaults m_defaults = sampleDefaults();
    std::optional<std::wstring> m_answer = L"\u4E9C";
    std::vector<DecoderCall> m_calls;
};

TEST_F(CodePages, NumbersOneToFiveNameTheFiveAsianPages) {
    EXPECT_EQ(visible(L"\\M+1889F\\M+2a440\\M+3B0A1\\M+48861\\M+5B0A1", m_defaults), L"\u4E9C\u4E9C\u4E9C\u4E9C\u4E9C");
    EXPECT_EQ(m_calls,
              (std::vector<DecoderCall>{
                  {"\x88\x9F", 932}, {"\xA4\x40", 950}, {"\xB0\xA1", 949}, {"\x88\x61", 1361}, {"\xB0\xA1", 936}}));
}

TEST_F(CodePages, AHighByteOfZeroLeavesOneByte) {
    visible(L"\\M+100B1", m_defaults);
    EXPECT_EQ(m_calls, (std::vector<DecoderCall>{{"\xB1", 932}}));
}

TEST_F(CodePages, BytesThatThePageLacksComeOutAsReplacement) {
    m_answer = std::nullopt;
    const Result result = parse(L"\\M+1FFFF", m_defaults);
    EXPECT_EQ(plainText(result.document), L"\uFFFD");
    EXPECT_EQ(codes(result), std::vector{UndecodableCharacter});
}

TEST_F(CodePages, OtherNumbersAreKeptAsText) {
    const Result result = parse(L"\\M+6ABCD\\M+12G00\\M+123", m_defaults);
    EXPECT_EQ(plainText(result.document), L"\\M+6ABCD\\M+12G00\\M+123");
    EXPECT_EQ(codes(result), (std::vector{MalformedCode, MalformedCode, MalformedCode}));
    EXPECT_TRUE(m_calls.empty());
}

TEST_F(CodePages, NumberedCharactersAreOfTheDrawingsPage) {
    m_defaults.codePage = 1251;
    visible(L"%%233", m_defaults);
    EXPECT_EQ(m_calls, (std::vector<DecoderCall>{{"\xE9", 1251}}));
}

TEST_F(CodePages, NumberedCharactersAreOfTheFontsPageWhereItNamesOne) {
    visible(L"{\\fArial|c204;%%233}%%233", m_defaults);
    EXPECT_EQ(m_calls, (std::vector<DecoderCall>{{"\xE9", 1251}, {"\xE9", 1252}}));
}

TEST_F(CodePages, DraftingSymbolsOfShapeFontsComeBeforeTheCodePage) {
    EXPECT_EQ(visible(L"\\Ftxt.shx;%%127%%128%%129", m_defaults), L"\u00B0\u00B1\u00D8");
    EXPECT_TRUE(m_calls.empty());
    m_answer = L"\u20AC";
    EXPECT_EQ(visible(L"\\fArial;%%128", m_defaults), L"\u20AC");
    m_defaults.shapeFont = true;
    EXPECT_EQ(visible(L"%%128", m_defaults), L"\u00B1");
}

TEST(NumberedCharacter, WithoutADecoderOnlyWesternTextIsKnown) {
    Defaults defaults = sampleDefaults();
    EXPECT_EQ(visible(L"%%252", defaults), L"\u00FC");
    EXPECT_EQ(visible(L"%%150", defaults), L"\uFFFD");
    defaults.codePage = 1251;
    EXPECT_EQ(visible(L"%%252", defaults), L"\uFFFD");
}

} // namespace
} // namespace mtext::testing
