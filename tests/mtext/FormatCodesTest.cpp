#include <gtest/gtest.h>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

using enum DiagnosticCode;

struct HeightCase {
    std::wstring_view content;
    float capSize;
};

class Height : public ::testing::TestWithParam<HeightCase> {};

// The text style's height is 2.5.
TEST_P(Height, OfTheLastRun) {
    const Result result = parse(GetParam().content, sampleDefaults());
    EXPECT_FLOAT_EQ(tokens(result).back().fontCapSize, GetParam().capSize);
    EXPECT_EQ(tokens(result).back().text, L"x");
    EXPECT_TRUE(result.diagnostics.empty());
}

INSTANTIATE_TEST_SUITE_P(Forms, Height,
                         ::testing::Values(HeightCase{L"\\H3;x", 3.0F}, HeightCase{L"\\H.5;x", 0.5F},
                                           HeightCase{L"\\H3.;x", 3.0F}, HeightCase{L"\\H+3;x", 3.0F},
                                           HeightCase{L"\\H1e1;x", 10.0F}, HeightCase{L"\\H2.50000;x", 2.5F},
                                           HeightCase{L"\\H2x;x", 5.0F}, HeightCase{L"\\H0.7X;x", 1.75F},
                                           HeightCase{L"\\H2x;\\H2x;x", 10.0F}, HeightCase{L"\\H4;\\H2x;x", 8.0F},
                                           HeightCase{L"\\H2x;\\H3;x", 3.0F}, HeightCase{L"a{\\H2x;b}x", 2.5F}));

TEST(HeightCode, WithoutASemicolonTakesTheNumberAlone) {
    const Result result = parse(L"\\H3Text", sampleDefaults());
    EXPECT_EQ(plainText(result.document), L"Text");
    EXPECT_FLOAT_EQ(tokens(result)[0].fontCapSize, 3.0F);
}

TEST(HeightCode, SenselessHeightsChangeNothing) {
    for (const std::wstring_view content : {L"\\H0;a", L"\\H-1;a", L"\\H0x;a", L"\\H;a", L"\\H1e-45;a"}) {
        const Result result = parse(content, sampleDefaults());
        EXPECT_EQ(plainText(result.document), L"a");
        EXPECT_EQ(tokens(result)[0].fontCapSize, 2.5F);
        EXPECT_EQ(codes(result), std::vector{MalformedCode});
    }
}

TEST(HeightCode, GrowsNoFurtherThanANumberCan) {
    std::wstring content;
    for (int i = 0; i < 100; ++i) {
        content += L"\\H10x;";
    }
    const Result result = parse(content + L"a", sampleDefaults());
    EXPECT_TRUE(tokens(result)[0].fontCapSize < 3.0e38F);
    EXPECT_FALSE(result.diagnostics.empty());
}

TEST(UnderlineCode, HoldsUntilItIsClosed) {
    const auto runs = tokens(parse(L"a\\Lb\\lc", sampleDefaults()));
    ASSERT_EQ(runs.size(), 3U);
    EXPECT_FALSE(runs[0].fontStyle.underline);
    EXPECT_TRUE(runs[1].fontStyle.underline);
    EXPECT_FALSE(runs[2].fontStyle.underline);
}

TEST(UnderlineCode, PercentUSwitchesIt) {
    const auto runs = tokens(parse(L"a%%ub%%Uc", sampleDefaults()));
    ASSERT_EQ(runs.size(), 3U);
    EXPECT_TRUE(runs[1].fontStyle.underline);
    EXPECT_FALSE(runs[2].fontStyle.underline);
}

TEST(Group, RestoresEverythingThatACodeSets) {
    const auto runs = tokens(parse(L"a{\\fX|b1|i1;\\H9;\\C1;\\Lb}c", sampleDefaults()));
    ASSERT_EQ(runs.size(), 3U);
    EXPECT_EQ(runs[1].fontFamily, L"X");
    EXPECT_EQ(runs[1].fontStyle, (render::SRichTextFontStyle{true, true, true}));
    EXPECT_EQ(runs[2].fontFamily, runs[0].fontFamily);
    EXPECT_EQ(runs[2].fontCapSize, runs[0].fontCapSize);
    EXPECT_EQ(runs[2].color, runs[0].color);
    EXPECT_EQ(runs[2].fontStyle, runs[0].fontStyle);
}

TEST(Group, NestsAndSpansParagraphs) {
    const auto runs = tokens(parse(L"{\\C1;a{\\C2;b\\Pc}d}e", sampleDefaults()));
    ASSERT_EQ(runs.size(), 5U);
    EXPECT_EQ(runs[1].color, runs[2].color);
    EXPECT_EQ(runs[3].color, runs[0].color);
    EXPECT_EQ(runs[4].color, 0xFF112233U);
}

struct UnsupportedCase {
    std::wstring_view content;
    std::vector<DiagnosticCode> diagnostics;
};

class Unsupported : public ::testing::TestWithParam<UnsupportedCase> {};

TEST_P(Unsupported, IsReportedAndItsTextStays) {
    const Result result = parse(GetParam().content, sampleDefaults());
    EXPECT_EQ(plainText(result.document), L"x");
    EXPECT_EQ(codes(result), GetParam().diagnostics);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, Unsupported,
    ::testing::Values(UnsupportedCase{L"\\Ax", {MalformedCode}}, UnsupportedCase{L"\\Q15;\\Q15;x", {ObliqueAngle}},
                      UnsupportedCase{L"\\Q0;x", {}}, UnsupportedCase{L"\\Q-15.5;x", {ObliqueAngle}},
                      UnsupportedCase{L"\\T1.5;x", {Tracking}}, UnsupportedCase{L"\\T1;x", {}},
                      UnsupportedCase{L"\\T;x", {MalformedCode}}, UnsupportedCase{L"\\W0.8;x", {WidthFactor}},
                      UnsupportedCase{L"\\W0.8x;x", {WidthFactor}}, UnsupportedCase{L"\\W1.0;x", {}},
                      UnsupportedCase{L"\\Ox\\o", {Overline}}, UnsupportedCase{L"\\Kx\\k", {Strikethrough}},
                      UnsupportedCase{L"%%ox%%o", {Overline}}, UnsupportedCase{L"%%kx%%k", {Strikethrough}},
                      UnsupportedCase{L"\\O\\Ox", {Overline}},
                      // Closing what nothing opened is harmless.
                      UnsupportedCase{L"\\o\\l\\kx", {}}, UnsupportedCase{L"{\\O}\\Ox", {Overline}}));

TEST(DimensionLineCode, BecomesAParagraph) {
    const Result result = parse(L"above\\Xbelow", sampleDefaults());
    EXPECT_EQ(plainText(result.document), L"above\nbelow");
    EXPECT_EQ(codes(result), std::vector{DimensionLineBreak});
}

TEST(Field, IsShownAsItsCode) {
    const std::wstring_view code = L"%<\\AcVar Date \\f \"M/d/yyyy\">%";
    const Result result = parse(L"a " + std::wstring(code) + L" b", sampleDefaults());
    EXPECT_EQ(plainText(result.document), L"a " + std::wstring(code) + L" b");
    EXPECT_EQ(codes(result), std::vector{Field});
    EXPECT_EQ(result.diagnostics[0].position, 2U);
}

TEST(Field, MayHoldFields) {
    const std::wstring_view code = L"%<\\AcExpr (%<\\_FldPtr 12>%+%<\\H5;>%)>%";
    const Result result = parse(code, sampleDefaults());
    EXPECT_EQ(plainText(result.document), code);
    EXPECT_EQ(codes(result), std::vector{Field});
}

TEST(Field, WithoutItsEndIsOrdinaryText) {
    EXPECT_EQ(visible(L"5%<6 and 7>%8"), L"5%<6 and 7>%8");
    EXPECT_EQ(visible(L"%<\\Lx"), L"%<x");
    const Result inner = parse(L"%<\\C1;%<\\H5;>%", sampleDefaults());
    EXPECT_EQ(plainText(inner.document), L"%<%<\\H5;>%");
}

} // namespace
} // namespace mtext::testing
