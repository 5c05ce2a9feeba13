#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <unicode/ubrk.h>

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

/// Where ICU's root rules, asked without our code, let a line start; the text's start and end count.
std::vector<bool> opportunitiesByIcu(std::u16string_view text) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UBreakIterator, decltype(&ubrk_close)> iterator(
        ubrk_open(UBRK_LINE, "root", text.data(), static_cast<std::int32_t>(text.size()), &error), ubrk_close);
    EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
    std::vector<bool> opportunities(text.size() + 1);
    for (std::int32_t place = ubrk_first(iterator.get()); place != UBRK_DONE; place = ubrk_next(iterator.get())) {
        opportunities[static_cast<std::size_t>(place)] = true;
    }
    return opportunities;
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

TEST(UnicodeLineBreakTest, WhereOpportunitiesDifferFromUnicodesTheyAreIcus) {
    for (const BreakCase& test : readBreakCases("auxiliary/LineBreakTest.txt")) {
        EXPECT_EQ(opportunitiesByIcu(test.text), platform::findBreakOpportunities(test.text, {}))
            << hexadecimal(test.text);
    }
}

} // namespace
} // namespace platform_test
