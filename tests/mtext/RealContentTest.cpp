#include <gtest/gtest.h>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

using enum DiagnosticCode;

TEST(RealContent, RepeatedAndContradictingCodesAreNormal) {
    const Result result = parse(L"\\A1;{\\A1;\\Q15;\\Q15;\\H3;\\H2x;\\H4;x\\o\\l}", sampleDefaults());
    const auto runs = tokens(result);
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].text, L"x");
    EXPECT_EQ(runs[0].fontCapSize, 4.0F);
}

TEST(RealContent, InchesWithAFractionStayTheNumberTheyAre) {
    EXPECT_EQ(visible(L"\\A1;2'-7\\H1.000000x;\\S1#2;\""), L"2'-7\u00A01/2\"");
    EXPECT_EQ(visible(L"{\\H0.7x;\\S3/4;}\" = 1'-0\""), L"3/4\" = 1'-0\"");
}

TEST(RealContent, ABulletListKeepsItsBulletsAndTabs) {
    const Result result =
        parse(L"\\pxi-3,l4t4;{\\A1;\u2022^Ifirst}\\P{\\A1;\u2022^Isecond}\\P\\pi*,l*,t;after", sampleDefaults());
    EXPECT_EQ(plainText(result.document), L"\u2022\tfirst\n\u2022\tsecond\nafter");
    EXPECT_EQ(result.document.tabStopWidth, 10.0F);
    ASSERT_EQ(result.formats.size(), 3U);
    EXPECT_EQ(result.formats[1].leftIndent, 10.0F);
    EXPECT_EQ(result.formats[1].firstLineIndent, -7.5F);
    EXPECT_EQ(result.formats[2].leftIndent, 0.0F);
}

TEST(RealContent, AGroupAroundABreakKeepsItsStyleForBothLines) {
    const auto list = paragraphs(parse(L"{\\C1;\\fTimes New Roman|b0|i0;\\H1.4x;\\A1;HEADLINE}{\\fTimes New "
                                       L"Roman|b0|i0;\\H1.4x;\\P}\\P{\\C3;\\A1;Left:}",
                                       sampleDefaults()));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[0].tokens.size(), 1U);
    EXPECT_FLOAT_EQ(list[0].tokens[0].fontCapSize, 3.5F);
    EXPECT_EQ(list[1].tokens[0].fontFamily, L"Style Font");
    EXPECT_EQ(list[2].tokens[0].text, L"Left:");
}

TEST(RealContent, AnAbsentShapeFontKeepsItsText) {
    const auto runs = tokens(parse(L"{\\Fcibt.shx|c0;BEDROOM}", sampleDefaults()));
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0].text, L"BEDROOM");
    EXPECT_EQ(runs[0].fontFamily, L"cibt.shx");
}

TEST(RealContent, StylesShownSideBySide) {
    const Result result =
        parse(L"{\\A1;overstrike: \\O\\C3;test}\\P{strike: \\K\\C4;test}\\P{\\LX}\\Pwidth: {\\W2;wide} "
              L"{\\W0.7;narrow}\\P{\\Q15;slanted}\\P{\\T1.5;spaced}",
              sampleDefaults());
    EXPECT_EQ(plainText(result.document), L"overstrike: test\nstrike: test\nX\nwidth: wide narrow\nslanted\nspaced");
    EXPECT_EQ(codes(result), (std::vector{Overline, Strikethrough, WidthFactor, WidthFactor, ObliqueAngle, Tracking}));
}

} // namespace
} // namespace mtext::testing
