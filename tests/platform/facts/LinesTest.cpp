#include <string>
#include <vector>

#include "support/LayoutTestSupport.h"

namespace platform_test {
namespace {

using Lines = std::vector<std::u16string>;

/// The text broken wherever it may be, but nowhere else.
Lines words(std::u16string_view text) {
    return lineTexts(text, *makeLayout(text, 1.0F, 0, {.wrapping = DWRITE_WORD_WRAPPING_WHOLE_WORD}));
}

TEST(LayoutNewlines, AreClustersOfWhitespaceWithoutWidth) {
    for (const std::u16string newline : {u"\n", u"\r", u"\v", u"\f", u"\u0085", u"\u2028", u"\u2029"}) {
        const auto layout = makeLayout(u"a" + newline);
        const auto clusters = clustersOf(*layout);
        ASSERT_EQ(2U, clusters.size());
        EXPECT_EQ(1U, clusters[1].length);
        EXPECT_EQ(1U, clusters[1].isNewline);
        EXPECT_EQ(1U, clusters[1].isWhitespace);
        EXPECT_EQ(0.0F, clusters[1].width);
        const auto lines = linesOf(*layout);
        ASSERT_EQ(2U, lines.size());
        EXPECT_EQ(1U, lines[0].newlineLength);
        EXPECT_EQ(1U, lines[0].trailingWhitespaceLength);
        EXPECT_EQ(0U, lines[1].newlineLength);
    }
}

TEST(LayoutNewlines, CrLfIsTwoClustersOfWhichTheSecondEndsTheLine) {
    const auto layout = makeLayout(u"a\r\nb");
    const auto clusters = clustersOf(*layout);
    ASSERT_EQ(4U, clusters.size());
    for (const std::size_t half : {1, 2}) {
        EXPECT_EQ(1U, clusters[half].length);
        EXPECT_EQ(1U, clusters[half].isWhitespace);
        EXPECT_EQ(half - 1, clusters[half].isNewline);
        EXPECT_EQ(half - 1, clusters[half].canWrapLineAfter);
        EXPECT_EQ(0.0F, clusters[half].width);
    }
    const auto lines = linesOf(*layout);
    ASSERT_EQ(2U, lines.size());
    EXPECT_EQ(3U, lines[0].length);
    EXPECT_EQ(2U, lines[0].newlineLength);
    EXPECT_EQ(2U, lines[0].trailingWhitespaceLength);
}

TEST(LayoutNewlines, CrLfStaysTogetherInANarrowBox) {
    for (const auto wrapping : {DWRITE_WORD_WRAPPING_WRAP, DWRITE_WORD_WRAPPING_CHARACTER}) {
        const auto layout = makeLayout(u"ab\r\n\r\nc", 13.0F, 0, {.wrapping = wrapping});
        EXPECT_EQ((std::vector<unsigned>{1, 3, 2, 1}), lineLengths(*layout));
    }
}

TEST(LayoutNewlines, TheLfOfACrLfSaysHowHighTheEmptyLineBehindItIs) {
    const auto layout = makeLayout(u"a\r\n");
    EXPECT_EQ(S_OK, layout->SetFontSize(50.0F, {2, 1}));
    const auto lines = linesOf(*layout);
    ASSERT_EQ(2U, lines.size());
    EXPECT_EQ(3U, lines[0].length);
    EXPECT_EQ(2U, lines[0].newlineLength);
    // DejaVu Sans: 1901 + 483 of 2048 units.
    EXPECT_FLOAT_EQ(50.0F * 2384.0F / 2048.0F, lines[1].height);
}

TEST(LayoutMetrics, EverySpaceThatAllowsABreakIsTrailingWhitespace) {
    const std::u16string spaces = u" \u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2008\u2009\u200A\u205F\u3000";
    for (const char16_t space : spaces) {
        const auto lines = linesOf(*makeLayout(std::u16string(u"a") + space));
        EXPECT_EQ(1U, lines[0].trailingWhitespaceLength) << std::hex << static_cast<unsigned>(space);
    }
    for (const char16_t noBreakSpace : {u'\u00A0', u'\u2007', u'\u202F'}) {
        const auto lines = linesOf(*makeLayout(std::u16string(u"a") + noBreakSpace));
        EXPECT_EQ(0U, lines[0].trailingWhitespaceLength) << std::hex << static_cast<unsigned>(noBreakSpace);
    }
}

TEST(LineBreaking, HyphensOfEveryScriptEndALine) {
    for (const char16_t hyphen : {u'-', u'\u058A', u'\u2010', u'\u2012', u'\u2013', u'\u05BE', u'\u200B', u'\u00AD'}) {
        const std::u16string first = std::u16string(u"ab") + hyphen;
        EXPECT_EQ((Lines{first, u"cd"}), words(first + u"cd")) << std::hex << static_cast<unsigned>(hyphen);
    }
}

TEST(LineBreaking, NoBreakSpacesHoldTheirNeighboursTogether) {
    for (const char16_t space : {u'\u00A0', u'\u2007', u'\u202F', u'\u2060'}) {
        const std::u16string text = std::u16string(u"ab") + space + u"cd";
        EXPECT_EQ(Lines{text}, words(text)) << std::hex << static_cast<unsigned>(space);
    }
}

TEST(LineBreaking, AnEastAsianOpeningBracketMayStartALineAfterALetter) {
    EXPECT_EQ((Lines{u"ab", u"\u300C\u6F22\u300D", u"cd"}), words(u"ab\u300C\u6F22\u300Dcd"));
    EXPECT_EQ((Lines{u"ab(cd)"}), words(u"ab(cd)"));
}

TEST(LineBreaking, LaoKhmerAndMyanmarBreakByDictionary) {
    // "Lao language"; "I love you"; "teacher" and "school": words that each language writes without a space.
    EXPECT_EQ((Lines{u"\u0E9E\u0EB2\u0EAA\u0EB2", u"\u0EA5\u0EB2\u0EA7"}),
              words(u"\u0E9E\u0EB2\u0EAA\u0EB2\u0EA5\u0EB2\u0EA7"));
    EXPECT_EQ((Lines{u"\u1781\u17D2\u1789\u17BB\u17C6", u"\u179F\u17D2\u179A\u17A1\u17B6\u1789\u17CB",
                     u"\u17A2\u17D2\u1793\u1780"}),
              words(u"\u1781\u17D2\u1789\u17BB\u17C6\u179F\u17D2\u179A\u17A1\u17B6\u1789\u17CB"
                    u"\u17A2\u17D2\u1793\u1780"));
    EXPECT_EQ((Lines{u"\u1006\u101B\u102C", u"\u1000\u103B\u1031\u102C\u1004\u103A\u1038"}),
              words(u"\u1006\u101B\u102C\u1000\u103B\u1031\u102C\u1004\u103A\u1038"));
}

} // namespace
} // namespace platform_test
