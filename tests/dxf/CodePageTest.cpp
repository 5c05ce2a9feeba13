#include <dxf/CodePage.h>

#include <gtest/gtest.h>

namespace {

using dxf::codePageFromName;
using dxf::decodeBytes;
using dxf::decodeLossy;
using dxf::encodeText;

TEST(CodePage, KnowsTheNamesThatDrawingsUse) {
    EXPECT_EQ(codePageFromName("ANSI_1251"), 1251U);
    EXPECT_EQ(codePageFromName("ansi_1252"), 1252U);
    EXPECT_EQ(codePageFromName("ANSI_932"), 932U);
    EXPECT_EQ(codePageFromName("ANSI_936"), 936U);
    EXPECT_EQ(codePageFromName("ANSI_949"), 949U);
    EXPECT_EQ(codePageFromName("ANSI_950"), 950U);
    EXPECT_EQ(codePageFromName("ANSI_874"), 874U);
    EXPECT_EQ(codePageFromName("Ansi_1256"), 1256U);
    EXPECT_EQ(codePageFromName("dos437"), 437U);
    EXPECT_EQ(codePageFromName("DOS850"), 850U);
    EXPECT_EQ(codePageFromName("dos866"), 866U);
    EXPECT_EQ(codePageFromName("MAC-ROMAN"), 10000U);
    EXPECT_EQ(codePageFromName("mac_roman"), 10000U);
    EXPECT_EQ(codePageFromName("ISO8859-5"), 28595U);
    EXPECT_EQ(codePageFromName("iso8859-1"), 28591U);
    EXPECT_EQ(codePageFromName("ascii"), 1252U);
    EXPECT_EQ(codePageFromName("UTF-8"), 65001U);
    EXPECT_EQ(codePageFromName("gb2312"), 936U);
    EXPECT_EQ(codePageFromName("1250"), 1250U);
}

TEST(CodePage, AdmitsNamesItDoesNotKnow) {
    for (const char* name : {"", "UNDEFINED", "undefined", "ANSI_", "ANSI_99999", "ANSI_99999999999999", "dos", "JOHAB",
                             "ANSI_1361", "ISO8859-99", "12a"}) {
        EXPECT_FALSE(codePageFromName(name)) << name;
    }
}

TEST(CodePage, EveryPageOpensAndKeepsAscii) {
    std::string ascii;
    for (char c = ' '; c <= '~'; ++c) {
        ascii += c;
    }
    const std::wstring wide(ascii.begin(), ascii.end());
    int known = 0;
    for (unsigned page = 0; page < 70000; ++page) {
        if (!dxf::isKnownCodePage(page)) {
            continue;
        }
        ++known;
        // A character outside ASCII in front takes the road through the converter.
        const auto decoded = dxf::decodeLossy("\xFF\xFF " + ascii, page);
        EXPECT_TRUE(decoded.text.ends_with(wide)) << page;
        EXPECT_EQ(encodeText(wide, page), ascii) << page;
        EXPECT_TRUE(encodeText(L"\xD800 " + wide, page).ends_with(ascii)) << page;
    }
    EXPECT_GT(known, 40);
}

/// Bytes and characters as the code pages' published charts have them.
TEST(CodePage, DecodesAndEncodesTheCommonPages) {
    struct Case {
        unsigned page;
        std::string bytes;
        std::wstring text;
    };
    const Case cases[] = {
        {1251,
         "\xCF\xEB\xE0\xED \xB9"
         "1",
         L"\u041F\u043B\u0430\u043D \u2116"
         L"1"},
        {1252, "\xD8 20 \x80 \x96", L"\u00D8 20 \u20AC \u2013"},
        {1256, "\xE3\xCE\xD8\xD8", L"\u0645\u062E\u0637\u0637"},
        {932, "\x90\x7D\x96\xCA \x95\x5C", L"\u56F3\u9762 \u8868"},
        {936, "\xCD\xBC\xD6\xBD", L"\u56FE\u7EB8"},
        {949, "\xB5\xB5\xB8\xE9", L"\uB3C4\uBA74"},
        {950, "\xB9\xCF\xAF\xC8", L"\u5716\u7D19"},
        {437, "\xF8 \x9B", L"\u00B0 \u00A2"},
        {866, "\x8F\xAB\xA0\xAD", L"\u041F\u043B\u0430\u043D"},
        {10000, "\xA1 \x8A", L"\u00B0 \u00E4"},
        {65001, "\xD0\x9F \xF0\x9F\x98\x80", L"\u041F \xD83D\xDE00"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(decodeBytes(c.bytes, c.page), c.text) << c.page;
        EXPECT_EQ(encodeText(c.text, c.page), c.bytes) << c.page;
    }
}

TEST(CodePage, TrailBytesThatEqualABackslashAreNoBackslash) {
    // U+8868 is 95 5C in the Japanese page, U+80FD is 94 5C.
    EXPECT_EQ(decodeBytes("\x95\x5C\x94\x5C\\P", 932), L"\u8868\u80FD\\P");
    // U+8A31 ends in 5C in the traditional Chinese page, U+5E9D in 7D in the simplified one.
    EXPECT_EQ(decodeBytes("\xB3\x5C\\P", 950), L"\u8A31\\P");
}

TEST(CodePage, UndefinedBytesAreReplacedAndCounted) {
    const auto decoded = decodeLossy("a\x81\x20"
                                     "b\xFF"
                                     "c",
                                     932);
    EXPECT_EQ(decoded.replaced, 2U);
    EXPECT_EQ(decoded.text, L"a\uFFFD b\uFFFD"
                            L"c");
    EXPECT_FALSE(decodeBytes("a\xFF", 932));
    EXPECT_EQ(decodeLossy("\xD0", 65001).text, L"\uFFFD");
    EXPECT_EQ(decodeLossy("\xC0\xAF", 65001).replaced, 2U);
}

TEST(CodePage, AnUnknownPageIsNoGuessForTheStrictAndWesternForTheLossy) {
    EXPECT_FALSE(decodeBytes("\xE4", 1361));
    EXPECT_FALSE(decodeBytes("abc", 1361));
    EXPECT_EQ(decodeLossy("\xE4", 1361).text, L"\u00E4");
}

TEST(CodePage, WritesWhatThePageLacksAsEscapes) {
    EXPECT_EQ(encodeText(L"\u2205 10 \u00D8", 1252), "\\U+2205 10 \xD8");
    EXPECT_EQ(encodeText(L"\u041F", 932), "\x84\x50");
    EXPECT_EQ(encodeText(L"\u0645", 1251), "\\U+0645");
    EXPECT_EQ(encodeText(L"\xD83D\xDE00", 1252), "\\U+D83D\\U+DE00");
    EXPECT_EQ(encodeText(L"a\xD800"
                         L"b",
                         65001),
              "a\\U+D800"
              "b");
    EXPECT_EQ(encodeText(L"\u00E4", 99999), "\\U+00E4");
    EXPECT_EQ(encodeText(L"", 1252), "");
}

TEST(CodePage, FindsUtf8OnlyWhereItIsWellFormed) {
    EXPECT_EQ(dxf::utf8Evidence("plain"), 0U);
    EXPECT_EQ(dxf::utf8Evidence("\xD0\x9F\xE5\x9B\xB3"), 2U);
    EXPECT_EQ(dxf::utf8Evidence("\xD0\x9F\xE5\x9B"), 0U);
    EXPECT_EQ(dxf::utf8Evidence("\xC0\xAF"), 0U);
    EXPECT_EQ(dxf::utf8Evidence("\xED\xA0\x80"), 0U);
}

TEST(CodePage, ResolvesEscapesInNames) {
    EXPECT_EQ(dxf::resolveUnicodeEscapes(L"\\U+041F\\u+043b1"), L"\u041F\u043B1");
    EXPECT_EQ(dxf::resolveUnicodeEscapes(L"\\U+22051"), L"\u22051");
    EXPECT_EQ(dxf::resolveUnicodeEscapes(L"\\U+22"), L"\\U+22");
    EXPECT_EQ(dxf::resolveUnicodeEscapes(L"\\U+22G0"), L"\\U+22G0");
    EXPECT_EQ(dxf::resolveUnicodeEscapes(L"C:\\Users"), L"C:\\Users");
}

TEST(CodePage, ComparesNamesInAnyCase) {
    EXPECT_EQ(dxf::foldName(L"Standard"), dxf::foldName(L"STANDARD"));
    EXPECT_EQ(dxf::foldName(L"\u041E\u043A\u043D\u043E"), dxf::foldName(L"\u041E\u041A\u041D\u041E"));
    EXPECT_EQ(dxf::foldName(L"\xD801\xDC00"), dxf::foldName(L"\xD801\xDC28"));
    EXPECT_EQ(dxf::foldName(L"\xD800"), L"\xD800");
    EXPECT_NE(dxf::foldName(L"a"), dxf::foldName(L"b"));
}

} // namespace
