#include <Common/Utf.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace {

using common::utf8FromWide;
using common::wideFromUtf8;

std::wstring units(std::initializer_list<unsigned> values) {
    std::wstring text;
    for (const unsigned value : values) {
        text += static_cast<wchar_t>(value);
    }
    return text;
}

TEST(Utf, ConvertsEveryLengthOfSequenceBothWays) {
    // U+0041, U+00E9, U+20AC, U+1F600 with the bytes the Unicode standard gives them.
    const std::string utf8 = "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
    const std::wstring wide = units({0x41, 0xE9, 0x20AC, 0xD83D, 0xDE00});
    EXPECT_EQ(wideFromUtf8(utf8), wide);
    EXPECT_EQ(utf8FromWide(wide), utf8);
}

TEST(Utf, ConvertsTheFirstAndLastCharacterOfEveryLength) {
    const std::string utf8 = std::string("\0", 1) +
                             "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"
                             "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    const std::wstring wide =
        units({0, 0x7F, 0x80, 0x7FF, 0x800, 0xD7FF, 0xE000, 0xFFFF, 0xD800, 0xDC00, 0xDBFF, 0xDFFF});
    EXPECT_EQ(wideFromUtf8(utf8), wide);
    EXPECT_EQ(utf8FromWide(wide), utf8);
}

TEST(Utf, AnEmptyTextStaysEmpty) {
    EXPECT_EQ(wideFromUtf8(""), L"");
    EXPECT_EQ(utf8FromWide(L""), "");
}

// The Unicode standard's own examples of replacing maximal subparts (its tables on U+FFFD substitution).
TEST(Utf, EveryMaximalIllFormedPartBecomesOneReplacement) {
    EXPECT_EQ(wideFromUtf8("\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41"),
              units({0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0x41}));
    EXPECT_EQ(wideFromUtf8("\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41"),
              units({0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0x41}));
    EXPECT_EQ(wideFromUtf8("\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42"),
              units({0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0x41, 0xFFFD, 0xFFFD, 0x42}));
    EXPECT_EQ(wideFromUtf8("\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41"), units({0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0x41}));
}

TEST(Utf, ASequenceCutOffByTheEndBecomesOneReplacement) {
    EXPECT_EQ(wideFromUtf8("a\xC3"), units({'a', 0xFFFD}));
    EXPECT_EQ(wideFromUtf8("a\xF0\x9F\x98"), units({'a', 0xFFFD}));
}

TEST(Utf, ALoneSurrogateBecomesAReplacementAndItsNeighboursStay) {
    const std::string replacement = "\xEF\xBF\xBD";
    EXPECT_EQ(utf8FromWide(units({'a', 0xD83D, 'b'})), "a" + replacement + "b");
    EXPECT_EQ(utf8FromWide(units({'a', 0xDE00, 'b'})), "a" + replacement + "b");
    EXPECT_EQ(utf8FromWide(units({0xD83D})), replacement);
    EXPECT_EQ(utf8FromWide(units({0xDE00, 0xD83D})), replacement + replacement);
    EXPECT_EQ(utf8FromWide(units({0xD83D, 0xD83D, 0xDE00})), replacement + "\xF0\x9F\x98\x80");
}

TEST(Utf, AnElementAbove0xFFFFIsNotUtf16) {
    if (sizeof(wchar_t) == 2) {
        GTEST_SKIP() << "wchar_t holds no such element here";
    }
    EXPECT_EQ(utf8FromWide(units({'a', 0x1F600, 'b'})), "a\xEF\xBF\xBD"
                                                        "b");
}

} // namespace
