#include <gtest/gtest.h>

#include "shaping/BreakOpportunities.h"

namespace platform_test {
namespace {

TEST(BreakOpportunities, CountTheEndsOfTheText) {
    const auto opportunities = platform::findBreakOpportunities(u"ab cd", {});
    EXPECT_EQ((platform::BreakOpportunities{true, false, false, true, false, true}), opportunities);
    EXPECT_EQ((platform::BreakOpportunities{true}), platform::findBreakOpportunities(u"", {}));
}

} // namespace
} // namespace platform_test
