#include <gtest/gtest.h>

#include <set>
#include <string>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

TEST(Diagnostics, EachHasANameOfItsOwnAndADescription) {
    std::set<std::string_view> names;
    const auto last = static_cast<unsigned>(DiagnosticCode::UnclosedGroup);
    for (unsigned code = 0; code <= last; ++code) {
        const auto diagnostic = static_cast<DiagnosticCode>(code);
        EXPECT_TRUE(names.insert(diagnosticName(diagnostic)).second) << diagnosticName(diagnostic);
        EXPECT_NE(diagnosticName(diagnostic), "unknown-diagnostic");
        EXPECT_FALSE(diagnosticDescription(diagnostic).empty());
    }
    EXPECT_EQ(diagnosticName(DiagnosticCode::StackedText), "stacked-text");
}

TEST(Diagnostics, AValueOutsideTheEnumerationHasANameToo) {
    EXPECT_EQ(diagnosticName(static_cast<DiagnosticCode>(200)), "unknown-diagnostic");
}

TEST(Diagnostics, GiveThePlaceAndTheTextOfTheCode) {
    const Result result = parse(L"ab\\Q15;cd\\S1/2;", sampleDefaults());
    ASSERT_EQ(result.diagnostics.size(), 2U);
    EXPECT_EQ(result.diagnostics[0].position, 2U);
    EXPECT_EQ(result.diagnostics[0].length, 5U);
    EXPECT_EQ(result.diagnostics[0].text, L"\\Q15;");
    EXPECT_EQ(result.diagnostics[1].position, 9U);
    EXPECT_EQ(result.diagnostics[1].text, L"\\S1/2;");
}

TEST(Diagnostics, StandInTheOrderOfTheContent) {
    const Result result = parse(L"{a\\Q1;{b}}}c{", sampleDefaults());
    EXPECT_EQ(codes(result), (std::vector{DiagnosticCode::ObliqueAngle, DiagnosticCode::UnopenedGroup,
                                          DiagnosticCode::UnclosedGroup}));
    const Result unclosed = parse(L"{\\Q1;a", sampleDefaults());
    EXPECT_EQ(codes(unclosed), (std::vector{DiagnosticCode::UnclosedGroup, DiagnosticCode::ObliqueAngle}));
}

TEST(Diagnostics, QuoteNoMoreThanTheBeginningOfLongText) {
    const Result result = parse(L"\\S" + std::wstring(1000, L'1') + L";", sampleDefaults());
    ASSERT_EQ(result.diagnostics.size(), 1U);
    EXPECT_EQ(result.diagnostics[0].length, 1003U);
    EXPECT_EQ(result.diagnostics[0].text.size(), 64U);
}

TEST(Diagnostics, PlainContentHasNone) {
    EXPECT_TRUE(
        parse(L"{\\fArial|b1|i0|c0|p34;\\H2x;\\C3;Note}\\P\\LA\\l\\pqc;", sampleDefaults()).diagnostics.empty());
}

} // namespace
} // namespace mtext::testing
