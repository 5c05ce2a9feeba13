// The steps of a layout by themselves, without fonts.

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "layout/BidiLevels.h"
#include "layout/BreakOpportunities.h"
#include "layout/Graphemes.h"
#include "layout/Name.h"
#include "layout/TextBuffer.h"

namespace platform_test {
namespace {

using Levels = std::vector<std::uint8_t>;

TEST(BidiLevels, AreNotKeptForTextThatReadsOneWay) {
    Levels levels{7};
    EXPECT_FALSE(platform::findBidiLevels(u"plain \u0430\u6F22 text", false, levels));
    EXPECT_TRUE(levels.empty());
    EXPECT_FALSE(platform::findBidiLevels(u"\u05D0\u05D1", true, levels));
    EXPECT_FALSE(platform::findBidiLevels(u"", true, levels));
}

TEST(BidiLevels, NumbersAndLatinLieOverRightToLeftText) {
    Levels levels;
    EXPECT_TRUE(platform::findBidiLevels(u"a\u05D01", false, levels));
    EXPECT_EQ((Levels{0, 1, 2}), levels);
    EXPECT_TRUE(platform::findBidiLevels(u"\u05D0a", true, levels));
    EXPECT_EQ((Levels{1, 2}), levels);
}

TEST(BidiLevels, OnlyAParagraphSeparatorEndsTheInfluenceOfAnEmbedding) {
    Levels levels;
    EXPECT_TRUE(platform::findBidiLevels(u"\u202Ba\u2028b", false, levels));
    EXPECT_EQ(2, levels[3]);
    EXPECT_TRUE(platform::findBidiLevels(u"\u202Ba\u2029b", false, levels));
    EXPECT_EQ(0, levels[3]);
}

TEST(BidiLevels, RunsAreReorderedFromTheHighestLevelDown) {
    std::vector<std::int32_t> order;
    platform::findVisualOrder({0, 1, 2, 1, 0}, order);
    EXPECT_EQ((std::vector<std::int32_t>{0, 3, 2, 1, 4}), order);
    platform::findVisualOrder({0, 0}, order);
    EXPECT_EQ((std::vector<std::int32_t>{0, 1}), order);
    platform::findVisualOrder({}, order);
    EXPECT_TRUE(order.empty());
}

std::vector<std::size_t> boundariesOf(std::u16string_view text) {
    platform::Graphemes graphemes(text);
    std::vector<std::size_t> boundaries;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (graphemes.isBoundary(i)) {
            boundaries.push_back(i);
        }
    }
    return boundaries;
}

TEST(Graphemes, MarksJoinersAndSequencesBelongTogether) {
    using Boundaries = std::vector<std::size_t>;
    EXPECT_EQ((Boundaries{0, 1, 2}), boundariesOf(u"abc"));
    EXPECT_EQ((Boundaries{0, 2}), boundariesOf(u"e\u0301x"));
    EXPECT_EQ((Boundaries{0, 2}), boundariesOf(u"\r\nx"));
    EXPECT_EQ((Boundaries{0, 1}), boundariesOf(u"\n\r"));
    EXPECT_EQ((Boundaries{0, 2}), boundariesOf(u"\u0628\u200D\u0628"));
    EXPECT_EQ((Boundaries{0}), boundariesOf(u"\u1100\u1161\u11A8"));
    EXPECT_EQ((Boundaries{0, 1}), boundariesOf(u"\uAC00\uAC00"));
    EXPECT_EQ((Boundaries{0}), boundariesOf(u"\U0001F468\u200D\U0001F469"));
    EXPECT_EQ((Boundaries{0, 4}), boundariesOf(u"\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7"));
    EXPECT_EQ((Boundaries{0, 1}), boundariesOf(u"a\u00AD"));
}

TEST(BreakOpportunities, CountTheEndsOfTheText) {
    const auto opportunities = platform::findBreakOpportunities(u"ab cd", {});
    EXPECT_EQ((platform::BreakOpportunities{true, false, false, true, false, true}), opportunities);
    EXPECT_EQ((platform::BreakOpportunities{true}), platform::findBreakOpportunities(u"", {}));
}

TEST(Names, AreSharedAndCompareByTheirCharacters) {
    EXPECT_EQ(platform::makeName(L"Some Family"), platform::makeName(L"Some Family"));
    EXPECT_EQ(nullptr, platform::makeName(L""));
    EXPECT_TRUE(platform::sameName(nullptr, std::make_shared<const std::wstring>()));
    EXPECT_FALSE(platform::sameName(platform::makeName(L"a"), platform::makeName(L"b")));
    EXPECT_EQ(L"de-\u00C4t", platform::textOf(platform::makeLocaleName(L"DE-\u00C4T")));
    EXPECT_EQ(L"", platform::textOf(nullptr));
}

TEST(TextBuffers, HoldTheTextInBothForms) {
    const platform::TextBuffer ascii(L"abcdef", 3);
    EXPECT_EQ(u"abc", ascii.units());
    EXPECT_STREQ(L"abc", ascii.wide());
    EXPECT_TRUE(ascii.isAscii());
    EXPECT_FALSE(platform::TextBuffer(L"\u00E4", 1).isAscii());
    EXPECT_EQ(0U, platform::TextBuffer(L"", 0).size());
}

} // namespace
} // namespace platform_test
