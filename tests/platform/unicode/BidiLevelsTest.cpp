#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "unicode/BidiLevels.h"

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

} // namespace
} // namespace platform_test
