#include <gtest/gtest.h>

#include "MTextTesting.h"

namespace mtext::testing {
namespace {

using enum DiagnosticCode;
using Alignment = render::eRichTextParagraphAlignment;

// The height of capitals is 2 wherever lengths are compared.
Defaults defaultsOfHeightTwo() {
    Defaults defaults = sampleDefaults();
    defaults.capSize = 2.0F;
    return defaults;
}

ParagraphFormat formatOf(std::wstring_view content) {
    return parse(content, defaultsOfHeightTwo()).formats.back();
}

std::vector<Alignment> alignments(std::wstring_view content, Alignment alignment = Alignment::Default) {
    Defaults defaults = sampleDefaults();
    defaults.alignment = alignment;
    std::vector<Alignment> list;
    for (const render::CRichTextParagraph& paragraph : paragraphs(parse(content, defaults))) {
        list.push_back(paragraph.alignment);
    }
    return list;
}

TEST(ParagraphAlignment, EachLetterHasItsOwn) {
    EXPECT_EQ(alignments(L"\\pql;a"), std::vector{Alignment::Left});
    EXPECT_EQ(alignments(L"\\pqr;a"), std::vector{Alignment::Right});
    EXPECT_EQ(alignments(L"\\pxqc;a"), std::vector{Alignment::Center});
    EXPECT_EQ(alignments(L"\\pi0,qj;a"), std::vector{Alignment::Justify});
    EXPECT_EQ(alignments(L"\\pqd;a"), std::vector{Alignment::Justify});
    EXPECT_EQ(codes(parse(L"\\pqd;a", sampleDefaults())), std::vector{DistributedAlignment});
}

TEST(ParagraphAlignment, AStarReturnsToTheEntitys) {
    EXPECT_EQ(alignments(L"\\pqr;a\\P\\pq*;b\\P\\pqr;c\\P\\pq;d\\P\\pqr;e\\P\\pi0,q,l0;f", Alignment::Center),
              (std::vector{Alignment::Right, Alignment::Center, Alignment::Right, Alignment::Center, Alignment::Right,
                           Alignment::Center}));
}

TEST(ParagraphAlignment, HoldsForTheParagraphsThatFollow) {
    EXPECT_EQ(alignments(L"a\\P\\pqc;b\\Pc"), (std::vector{Alignment::Default, Alignment::Center, Alignment::Center}));
}

TEST(ParagraphAlignment, GivenInTheMiddleHoldsForTheWholeParagraph) {
    EXPECT_EQ(alignments(L"a\\pqc;b"), std::vector{Alignment::Center});
}

TEST(ParagraphAlignment, OfAGroupHoldsForItsParagraphsOnly) {
    EXPECT_EQ(alignments(L"{\\pqc;a}\\Pb"), (std::vector{Alignment::Center, Alignment::Default}));
    EXPECT_EQ(alignments(L"{\\pqc;a\\P}b"), (std::vector{Alignment::Center, Alignment::Default}));
    EXPECT_EQ(alignments(L"{\\pqc;a\\Pb}c"), (std::vector{Alignment::Center, Alignment::Center}));
}

TEST(ParagraphIndent, CountsHeightsOfCapitals) {
    const ParagraphFormat format = formatOf(L"\\pi-1.5,l3,r.5;a");
    EXPECT_EQ(format.firstLineIndent, -3.0F);
    EXPECT_EQ(format.leftIndent, 6.0F);
    EXPECT_EQ(format.rightIndent, 1.0F);
    EXPECT_EQ(codes(parse(L"\\pi-1.5,l3,r.5;a", sampleDefaults())),
              (std::vector{ParagraphIndent, ParagraphIndent, ParagraphIndent}));
}

TEST(ParagraphIndent, CommasMayBeMissing) {
    const ParagraphFormat format = formatOf(L"\\pxi-3,l4t4;a");
    EXPECT_EQ(format.firstLineIndent, -6.0F);
    EXPECT_EQ(format.leftIndent, 8.0F);
    ASSERT_EQ(format.tabStops.size(), 1U);
    EXPECT_EQ(format.tabStops[0].position, 8.0F);
}

TEST(ParagraphIndent, AStarOrNothingIsNone) {
    const ParagraphFormat format = formatOf(L"\\pi1,l2,r3,b1,a1,sm2,t4;\\pi*,l,r*,b*,a*,s*,t;a");
    EXPECT_EQ(format.firstLineIndent, 0.0F);
    EXPECT_EQ(format.leftIndent, 0.0F);
    EXPECT_EQ(format.rightIndent, 0.0F);
    EXPECT_EQ(format.spaceBefore, 0.0F);
    EXPECT_EQ(format.spaceAfter, 0.0F);
    EXPECT_EQ(format.lineSpacingKind, LineSpacingKind::Default);
    EXPECT_TRUE(format.tabStops.empty());
}

TEST(ParagraphIndent, NoneNeedsNoReport) {
    EXPECT_TRUE(parse(L"\\pi0,l0,t;\\pi*;a", sampleDefaults()).diagnostics.empty());
}

TEST(ParagraphIndent, IsNeverInfinite) {
    Defaults defaults = sampleDefaults();
    defaults.capSize = 1e30F;
    EXPECT_EQ(parse(L"\\pl1e30;a", defaults).formats[0].leftIndent, 0.0F);
}

TEST(TabStopCode, ListsPositionsOfThreeKinds) {
    const ParagraphFormat format = formatOf(L"\\pt4,c8.5,r12,16;a");
    ASSERT_EQ(format.tabStops.size(), 4U);
    EXPECT_EQ(format.tabStops[0].position, 8.0F);
    EXPECT_EQ(format.tabStops[0].kind, TabStopKind::Left);
    EXPECT_EQ(format.tabStops[1].position, 17.0F);
    EXPECT_EQ(format.tabStops[1].kind, TabStopKind::Center);
    EXPECT_EQ(format.tabStops[2].kind, TabStopKind::Right);
    EXPECT_EQ(format.tabStops[3].kind, TabStopKind::Left);
}

TEST(TabStopCode, OtherPropertiesMayFollow) {
    const ParagraphFormat format = formatOf(L"\\pt4,8,l2;a");
    EXPECT_EQ(format.tabStops.size(), 2U);
    EXPECT_EQ(format.leftIndent, 4.0F);
}

TEST(TabStopCode, ZAndStarRemoveThem) {
    EXPECT_TRUE(formatOf(L"\\pt4;\\ptz;a").tabStops.empty());
    EXPECT_TRUE(formatOf(L"\\pt4;\\pt*;a").tabStops.empty());
}

TEST(TabStopCode, HasAnEnd) {
    std::wstring content = L"\\pt1";
    for (int i = 0; i < 1000; ++i) {
        content += L",2";
    }
    EXPECT_EQ(formatOf(content + L";a").tabStops.size(), 64U);
}

TEST(TabStopWidth, IsThatOfEvenStopsWhereTabsAreUsed) {
    const auto width = [](std::wstring_view content) {
        return parse(content, defaultsOfHeightTwo()).document.tabStopWidth;
    };
    EXPECT_EQ(width(L"\\pxi-3,l4,t4;-^Ia\\P-^Ib"), 8.0F);
    EXPECT_EQ(width(L"\\pt4,8,12;a^Ib"), 8.0F);
    EXPECT_EQ(width(L"plain\\P\\pt4;a^Ib"), 8.0F);
    // Uneven, unlike, unused, centred, or only for some of the tabs.
    EXPECT_EQ(width(L"\\pt4,9;a^Ib"), 40.0F);
    EXPECT_EQ(width(L"\\pt4;a^Ib\\P\\pt5;a^Ib"), 40.0F);
    EXPECT_EQ(width(L"\\pt4;ab"), 40.0F);
    EXPECT_EQ(width(L"\\ptc4;a^Ib"), 40.0F);
    EXPECT_EQ(width(L"\\pt0;a^Ib"), 40.0F);
    EXPECT_EQ(width(L"\\pt4;a^Ib\\P\\pt;a^Ib"), 40.0F);
}

TEST(ParagraphSpacingCode, HasThreeKindsOfLineSpacing) {
    EXPECT_EQ(formatOf(L"\\psm1.5;a").lineSpacingKind, LineSpacingKind::Multiple);
    EXPECT_EQ(formatOf(L"\\psm1.5;a").lineSpacing, 1.5F);
    EXPECT_EQ(formatOf(L"\\pse2;a").lineSpacingKind, LineSpacingKind::Exactly);
    EXPECT_EQ(formatOf(L"\\pse2;a").lineSpacing, 4.0F);
    EXPECT_EQ(formatOf(L"\\psa2;a").lineSpacingKind, LineSpacingKind::AtLeast);
    EXPECT_EQ(formatOf(L"\\psm0;a").lineSpacingKind, LineSpacingKind::Default);
    EXPECT_EQ(formatOf(L"\\psm;a").lineSpacingKind, LineSpacingKind::Default);
    EXPECT_EQ(formatOf(L"\\ps1.5;a").lineSpacingKind, LineSpacingKind::Default);
}

TEST(ParagraphSpacingCode, HasRoomAboveAndBelow) {
    const ParagraphFormat format = formatOf(L"\\pb1,a2;a");
    EXPECT_EQ(format.spaceBefore, 2.0F);
    EXPECT_EQ(format.spaceAfter, 4.0F);
    EXPECT_EQ(codes(parse(L"\\psm1.5,b1,a2;a", sampleDefaults())),
              (std::vector{ParagraphSpacing, ParagraphSpacing, ParagraphSpacing}));
}

TEST(ParagraphCode, UnknownPropertiesAreReportedWhereTheyStand) {
    const Result result = parse(L"a\\pl0,w5,qz,qc;b", sampleDefaults());
    EXPECT_EQ(plainText(result.document), L"ab");
    EXPECT_EQ(codes(result), (std::vector{UnknownParagraphCode, UnknownParagraphCode}));
    EXPECT_EQ(result.diagnostics[0].position, 6U);
    EXPECT_EQ(result.diagnostics[0].text, L"w5");
    EXPECT_EQ(result.diagnostics[1].text, L"qz");
    EXPECT_EQ(paragraphs(result)[0].alignment, Alignment::Center);
}

TEST(ParagraphCode, FormatsAreOfTheParagraphTheyStandIn) {
    const Result result = parse(L"a\\P\\pl1;b\\P\\pl*;c", defaultsOfHeightTwo());
    ASSERT_EQ(result.formats.size(), 3U);
    EXPECT_EQ(result.formats[0].leftIndent, 0.0F);
    EXPECT_EQ(result.formats[1].leftIndent, 2.0F);
    EXPECT_EQ(result.formats[2].leftIndent, 0.0F);
}

} // namespace
} // namespace mtext::testing
