#include <gtest/gtest.h>

#include <cstddef>
#include <string_view>
#include <vector>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

using enum DiagnosticCode;

struct UnmetCase {
    std::wstring_view content;
    std::vector<std::size_t> positions; ///< Of the codes that are reported.
};

void PrintTo(const UnmetCase& unmet, std::ostream* out) {
    *out << ::testing::PrintToString(unmet.content);
}

/// Each of these holds codes of one kind.
class UnmetCode : public ::testing::TestWithParam<UnmetCase> {};

TEST_P(UnmetCode, IsReportedOnceWhereItChangesSomething) {
    const Result result = parse(GetParam().content, sampleDefaults());
    std::vector<std::size_t> positions;
    for (const Diagnostic& diagnostic : result.diagnostics) {
        EXPECT_EQ(diagnostic.code, result.diagnostics.front().code);
        positions.push_back(diagnostic.position);
    }
    EXPECT_EQ(positions, GetParam().positions);
}

INSTANTIATE_TEST_SUITE_P(InlineAlignment, UnmetCode,
                         ::testing::Values(UnmetCase{L"\\A1;a", {}}, UnmetCase{L"\\A1;a{\\H1x;b}", {}},
                                           UnmetCase{L"\\A1;a{\\H2x;b}", {0}}, UnmetCase{L"{\\H2x;b}\\A2;a", {8}},
                                           // The tallest text is what others are aligned with.
                                           UnmetCase{L"a{\\H2x;\\A1;b}", {}},
                                           // A height written with four digits is the text's own.
                                           UnmetCase{L"\\A1;a{\\H2.499;b}", {}},
                                           // Other paragraphs have other lines, and blanks show nothing.
                                           UnmetCase{L"\\A1;a\\P{\\H2x;b}", {}}, UnmetCase{L"\\A1;a{\\H2x; ^I}", {}},
                                           UnmetCase{L"\\A0;a{\\H2x;b}", {}},
                                           UnmetCase{L"\\A1;\\A1;\\A0;a{\\H2x;b}", {}},
                                           UnmetCase{L"{\\A1;a}\\P{\\A1;a\\H2x;b}", {10}}));

INSTANTIATE_TEST_SUITE_P(TabStops, UnmetCode,
                         ::testing::Values(UnmetCase{L"\\pt4,9;a", {}}, UnmetCase{L"\\pt4,9;a^Ib", {2}},
                                           // Even stops become the document's.
                                           UnmetCase{L"\\pt4,8;a^Ib", {}}, UnmetCase{L"\\pt4,c8;a^Ib", {2}},
                                           UnmetCase{L"\\pt4;a^Ib\\P\\pt5;a^Ib", {2, 13}},
                                           UnmetCase{L"\\pt4,9;a\\Pb^I", {2}}, UnmetCase{L"\\pt4,9;\\ptz;a^Ib", {}}));

INSTANTIATE_TEST_SUITE_P(Characters, UnmetCode,
                         ::testing::Values(UnmetCase{L"a\\Q15;", {}}, UnmetCase{L"\\Q15; ", {}},
                                           UnmetCase{L"\\Q15;\\Q15;a", {5}}, UnmetCase{L"\\Q15;{a}{b}c", {0}},
                                           UnmetCase{L"{\\Q15;a}b{\\Q9;c}", {1, 10}}, UnmetCase{L"\\W2;\\W1;a", {}},
                                           UnmetCase{L"\\W2;1^I2", {0}}, UnmetCase{L"\\O\\P\\o", {}},
                                           UnmetCase{L"\\T2; ", {0}}, UnmetCase{L"\\Fa.shx,b.shx;", {}},
                                           UnmetCase{L"\\K\\~", {0}}, UnmetCase{L"\\Ka\\k\\Kb", {0, 5}},
                                           UnmetCase{L"\\S;a", {}}));

INSTANTIATE_TEST_SUITE_P(Paragraphs, UnmetCode,
                         ::testing::Values(UnmetCase{L"\\pi1;", {}}, UnmetCase{L"\\pi1;a\\Pb", {2}},
                                           UnmetCase{L"\\pi1;\\pi2;a", {7}}, UnmetCase{L"\\pi1;\\pi*;a", {}},
                                           UnmetCase{L"\\pqd;", {}}, UnmetCase{L"\\pqd;\\pql;a", {}},
                                           UnmetCase{L"\\psm2;\\ps*;a", {}}, UnmetCase{L"a\\P\\pb2;", {5}}));

TEST(UnmetCodes, OfOneLineTextsStandInTheOrderOfTheContent) {
    const Result result = parseText(L"%%o%%k\x01 a", sampleDefaults());
    EXPECT_EQ(codes(result), (std::vector{Overline, Strikethrough, ControlCharacter}));
    EXPECT_EQ(result.diagnostics[0].text, L"%%o");
}

} // namespace
} // namespace mtext::testing
