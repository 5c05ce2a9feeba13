#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "shaping/BreakOpportunities.h"
#include "unicode/UnicodeFile.h"

namespace platform_test {
namespace {

TEST(UnicodeLineBreakTest, EveryOpportunityIsUnicodes) {
    const std::vector<BreakCase> cases = readBreakCasesOfData("LineBreakTest-17.0.0.txt");
    EXPECT_EQ(19338U, cases.size());
    for (BreakCase expected : cases) {
        // No line ends before the text; here its start counts all the same.
        expected.breaks.front() = true;
        EXPECT_EQ(expected.breaks, platform::findBreakOpportunities(expected.text, {})) << hexadecimal(expected.text);
    }
}

} // namespace
} // namespace platform_test
