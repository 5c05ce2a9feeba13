#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "layout/BreakOpportunities.h"
#include "unicode/UnicodeFile.h"

namespace platform_test {
namespace {

std::set<std::string> knownDifferences() {
    std::set<std::string> texts;
    forEachLineOfData("line-break-differences.txt",
                      [&](std::string_view line) { texts.insert(hexadecimal(textOfCodes(line))); });
    return texts;
}

TEST(UnicodeLineBreakTest, OpportunitiesAreUnicodesButForTheListedTexts) {
    const std::vector<BreakCase> cases = readBreakCases("auxiliary/LineBreakTest.txt");
    EXPECT_EQ(7654U, cases.size());
    std::set<std::string> different;
    for (BreakCase expected : cases) {
        const auto found = platform::findBreakOpportunities(expected.text, {});
        // No line ends before the text; here its start counts all the same.
        expected.breaks.front() = true;
        if (expected.breaks != found) {
            different.insert(hexadecimal(expected.text));
        }
    }
    EXPECT_EQ(knownDifferences(), different);
    EXPECT_EQ(22U, different.size());
}

} // namespace
} // namespace platform_test
