#include <cstddef>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "unicode/Graphemes.h"

namespace platform_test {
namespace {

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

} // namespace
} // namespace platform_test
