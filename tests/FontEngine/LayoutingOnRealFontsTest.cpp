// The service and the layoutings on the pinned fonts: what single texts do in
// lines, boxes, tabs and clusters.

#include <algorithm>
#include <cmath>
#include <set>

#include <gmock/gmock.h>

#include "RealFonts.h"

using namespace testdocuments;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr auto Left = eRichTextParagraphAlignment::Left;
constexpr auto Right = eRichTextParagraphAlignment::Right;
constexpr auto Center = eRichTextParagraphAlignment::Center;
constexpr auto Justify = eRichTextParagraphAlignment::Justify;
constexpr auto Top = eRichTextParagraphVerticalAlignment::Top;

// DejaVu Sans: 2048 units to the em, capitals 1493 high (the height of H), lines
// 1901 + 483, the underline 40 below the baseline and 90 thick.
constexpr double unit = 10.0 / 1493.0;
constexpr double lineHeight = (1901 + 483) * unit;
constexpr double spaceAdvance = 651 * unit;
constexpr double precision = 1e-4;
constexpr double snapping = 0.005 + precision;

const wchar_t* const pangram = L"The quick brown fox jumps over the lazy dog and back again";

std::vector<std::wstring> runTexts(const std::vector<fonts::SGlyphRunDesc>& runs) {
    std::vector<std::wstring> texts;
    for (const fonts::SGlyphRunDesc& run : runs)
        texts.push_back(run.text);
    return texts;
}

std::vector<double> baselinesOf(const std::vector<fonts::SGlyphRunDesc>& runs) {
    std::vector<double> baselines;
    for (const fonts::SGlyphRunDesc& run : runs)
        if (baselines.empty() || baselines.back() != run.baselineOrigin.y)
            baselines.push_back(run.baselineOrigin.y);
    return baselines;
}

class OnRealFonts : public RealFontsTest {
protected:
    std::unique_ptr<fonts::IRichTextDocumentLayouting> layOutClusters(const render::CRichTextDocument& document,
                                                                      const MbRect& box) {
        auto layouting = fonts::CRichTextDocumentLayoutingFactory(service.get()).createForDxfMTextsByClusters(document);
        layouting->setLayoutRect(box);
        layouting->layout();
        EXPECT_EQ(layouting->getRects().size(), layouting->getParagraphs().size());
        return layouting;
    }

    // The clusters' texts, in the order in which they were produced.
    static std::vector<std::wstring> clusterTexts(const fonts::IRichTextDocumentLayouting& layouting) {
        std::vector<std::wstring> texts;
        for (const render::CRichTextParagraph& paragraph : layouting.getParagraphs())
            texts.push_back(paragraph.tokens.at(0).text);
        return texts;
    }
};

constexpr MbRect wideBox(0.0, 0.0, 1000.0, 500.0);

} // namespace

// ---- lines ----

TEST_F(OnRealFonts, ParagraphsAreStackedByTheHeightOfTheirLines) {
    const std::vector<MbRect> rects =
        service->getParagraphRects(render::makeDocument({makeParagraph(L"one"), makeParagraph(L"two")}), 0, 0);
    ASSERT_THAT(rects, SizeIs(2));
    EXPECT_EQ(rects[0].ymax, 0.0);
    EXPECT_NEAR(rects[0].ymin, -lineHeight, precision);
    EXPECT_NEAR(rects[1].ymax, -lineHeight, precision);
    EXPECT_NEAR(rects[1].ymin, -2 * lineHeight, precision);
}

TEST_F(OnRealFonts, AWrappedParagraphHasOneBaselineToALine) {
    const std::vector<fonts::SGlyphRunDesc> runs = glyphRuns(makeParagraph(pangram), 120.0);
    const std::vector<double> baselines = baselinesOf(runs);
    ASSERT_GE(baselines.size(), 3u);
    for (size_t i = 0; i < baselines.size(); ++i)
        EXPECT_NEAR(baselines[i], -(1901 * unit + static_cast<double>(i) * lineHeight), snapping);
    const MbRect rect = service->getParagraphRects(render::makeDocument({makeParagraph(pangram)}), 120.0, 0.0).at(0);
    EXPECT_NEAR(rect.ymax - rect.ymin, static_cast<double>(baselines.size()) * lineHeight, 10 * precision);
    EXPECT_LE(rect.xmax, 120.0);
    std::wstring text;
    for (const fonts::SGlyphRunDesc& run : runs)
        text += run.text;
    EXPECT_EQ(text, pangram);
}

TEST_F(OnRealFonts, AParagraphThatMustNotWrapStaysOnOneLine) {
    render::CRichTextParagraph paragraph = makeParagraph(pangram);
    paragraph.noWrap = true;
    EXPECT_THAT(baselinesOf(glyphRuns(paragraph, 120.0)), SizeIs(1));
    const MbRect rect = service->getParagraphRects(render::makeDocument({paragraph}), 120.0, 0.0).at(0);
    EXPECT_GT(rect.xmax, 300.0);
}

TEST_F(OnRealFonts, AWordWiderThanTheBoxStaysWhole) {
    EXPECT_THAT(baselinesOf(glyphRuns(makeParagraph(L"Donaudampfschiff"), 20.0)), SizeIs(1));
}

TEST_F(OnRealFonts, TextIsAlignedWithinTheWidthGiven) {
    const double width = service->getTextRect(L"word", L"DejaVu Sans", 10, {}).xmax;
    const auto boxOf = [&](eRichTextParagraphAlignment alignment) {
        return service->getParagraphRects(render::makeDocument({makeParagraph(L"word", alignment)}), 100, 0).at(0);
    };
    EXPECT_EQ(boxOf(Left).xmin, 0.0);
    EXPECT_NEAR(boxOf(Right).xmax, 100.0, precision);
    EXPECT_NEAR(boxOf(Right).xmin, 100.0 - width, precision);
    EXPECT_NEAR(boxOf(Center).xmin, (100.0 - width) / 2, precision);
}

TEST_F(OnRealFonts, TextIsAlignedWithinTheHeightGiven) {
    const auto boxOf = [&](eRichTextParagraphVerticalAlignment alignment) {
        return service->getParagraphRects(render::makeDocument({makeParagraph(L"word", Left, alignment)}), 0, 50).at(0);
    };
    EXPECT_EQ(boxOf(Top).ymax, 0.0);
    EXPECT_NEAR(boxOf(eRichTextParagraphVerticalAlignment::Bottom).ymin, -50.0, precision);
    EXPECT_NEAR(boxOf(eRichTextParagraphVerticalAlignment::Middle).ymax, -(50.0 - lineHeight) / 2, precision);
}

TEST_F(OnRealFonts, AnEmptyParagraphIsAsHighAsALineAndHasNoInk) {
    const auto document = render::makeDocument({makeParagraph(L"")});
    const MbRect rect = service->getParagraphRects(document, 0, 0).at(0);
    EXPECT_NEAR(rect.ymin, -lineHeight, precision);
    EXPECT_EQ(service->getParagraphGeometryRects(document, 0, 0).at(0), MbRect());
    EXPECT_EQ(service->getTextBaseline(L"", L"DejaVu Sans", 10, {}, {}), 0.0);
}

TEST_F(OnRealFonts, CapitalsAreAsHighAsAskedForInEveryFont) {
    for (const wchar_t* family : {L"DejaVu Sans", L"DejaVu Serif", L"Liberation Sans", L"Noto Sans", L"Noto Serif"}) {
        const MbRect ink = service->getTextGeometryRect(L"H", family, 7.5f, {}, {});
        // Fonts may draw an H some units higher or lower than they state.
        EXPECT_NEAR(ink.ymax - ink.ymin, 7.5, 0.01) << family;
    }
}

TEST_F(OnRealFonts, MixedScriptsAreSetInFontsThatHaveThem) {
    const std::vector<fonts::SGlyphRunDesc> runs = glyphRuns(makeParagraph(L"Raum \u56f3\u9762 2"));
    std::wstring text;
    for (const fonts::SGlyphRunDesc& run : runs) {
        text += run.text;
        const bool isJapanese = run.text.find(L'\u56f3') != std::wstring::npos;
        EXPECT_EQ(run.token.fontFamily == L"DejaVu Sans", !isJapanese) << runs.size();
        EXPECT_EQ(run.token.text, run.text);
    }
    EXPECT_EQ(text, L"Raum \u56f3\u9762 2");
}

// ---- whitespace, tabs, underlines ----

TEST_F(OnRealFonts, SpacesHaveABoxAndNoInk) {
    const auto document = render::makeDocument({makeParagraph(L"   ")});
    EXPECT_EQ(service->getParagraphGeometryRects(document, 0, 0).at(0), MbRect());
    const MbRect rect = service->getParagraphRects(document, 0, 0).at(0);
    EXPECT_FALSE(rect.isEmpty());
    EXPECT_NEAR(rect.ymin, -lineHeight, precision);
    const std::vector<fonts::SGlyphRunDesc> runs = glyphRuns(makeParagraph(L"   "));
    for (const fonts::SGlyphRunDesc& run : runs)
        EXPECT_EQ(run.bounds, MbRect());
}

TEST_F(OnRealFonts, UnderlinedTrailingSpacesAreCoveredByTheBar) {
    render::CRichTextParagraph paragraph = makeParagraph(L"H  ");
    paragraph.tokens[0].fontStyle.underline = true;
    std::vector<boost::intrusive_ptr<MbRegion>> regions;
    const std::vector<fonts::SGlyphRunDesc> runs = service->getGlyphRuns(paragraph, 0, 0, {}, regions);
    ASSERT_THAT(regions, SizeIs(1));
    const double width = 1540 * unit + 2 * spaceAdvance;
    const double baseline = runs.at(0).baselineOrigin.y;
    const MbRect bar(0.0, baseline - (40 + 90) * unit, width, baseline - 40 * unit);
    expectNear(regions[0]->boundingRect(), bar, precision);
    const MbRect ink = service->getParagraphGeometryRects(render::makeDocument({paragraph}), 0, 0).at(0);
    EXPECT_NEAR(ink.xmax, width, precision);
    EXPECT_NEAR(ink.ymin, bar.ymin, precision);
}

TEST_F(OnRealFonts, UnderlinedSpacesHaveTheBarAloneForInk) {
    render::CRichTextParagraph paragraph = makeParagraph(L"  ");
    paragraph.tokens[0].fontStyle.underline = true;
    const MbRect ink = service->getParagraphGeometryRects(render::makeDocument({paragraph}), 0, 0).at(0);
    EXPECT_NEAR(ink.xmax - ink.xmin, 2 * spaceAdvance, precision);
    EXPECT_NEAR(ink.ymax - ink.ymin, 90 * unit, precision);
}

TEST_F(OnRealFonts, EachUnderlinedLineHasABarOfItsOwn) {
    render::CRichTextParagraph paragraph = makeParagraph(pangram);
    paragraph.tokens[0].fontStyle.underline = true;
    std::vector<boost::intrusive_ptr<MbRegion>> regions;
    const size_t lines = baselinesOf(service->getGlyphRuns(paragraph, 120.0, 0, {}, regions)).size();
    EXPECT_GE(lines, 3u);
    EXPECT_THAT(regions, SizeIs(lines));
}

TEST_F(OnRealFonts, OneLineTextIsNeverUnderlined) {
    const render::SRichTextFontStyle underlined = {false, false, true};
    EXPECT_EQ(service->getTextGeometryRect(L"HH", L"DejaVu Sans", 10, {}, underlined),
              service->getTextGeometryRect(L"HH", L"DejaVu Sans", 10, {}, {}));
    EXPECT_EQ(service->getTextRect(L"HH", L"DejaVu Sans", 10, underlined),
              service->getTextRect(L"HH", L"DejaVu Sans", 10, {}));
}

TEST_F(OnRealFonts, TextAfterATabStandsAtTheNextTabStop) {
    const auto xOf = [&](const wchar_t* text, std::optional<double> tabStopWidth) {
        std::vector<boost::intrusive_ptr<MbRegion>> regions;
        return service->getGlyphRuns(makeParagraph(text), 0, 0, tabStopWidth, regions).back().baselineOrigin.x;
    };
    EXPECT_NEAR(xOf(L"a\tb", {}), 40.0, precision);
    EXPECT_NEAR(xOf(L"a\t\tb", {}), 80.0, precision);
    EXPECT_NEAR(xOf(L"a\tb", 25.0), 25.0, precision);
    EXPECT_NEAR(xOf(L"HHHHHH\tb", 25.0), 75.0, precision);
    const MbRect ink = service->getTextGeometryRect(L"\tH", L"DejaVu Sans", 10, 30.0, {});
    EXPECT_NEAR(ink.xmin, 30.0 + 201 * unit, precision);
}

// ---- plain and DXF layouting ----

TEST_F(OnRealFonts, DocumentLayoutingInABoxHangsParagraphsFromItsTop) {
    const auto document = render::makeDocument({makeParagraph(L"one"), makeParagraph(L"two", Right)});
    auto layouting = fonts::CRichTextDocumentLayoutingFactory(service.get()).create(document);
    layouting->setLayoutRect(MbRect(10, 20, 210, 120));
    layouting->setHorizontalMargin(5.0f);
    layouting->layout();
    const std::vector<MbRect> rects = layouting->getRects();
    ASSERT_THAT(rects, SizeIs(2));
    // Each is aligned vertically within a box of its own height, at the top here.
    expectNear(rects[0], MbRect(15, 120 - lineHeight, 205, 120), precision);
    expectNear(rects[1], MbRect(15, 120 - 2 * lineHeight, 205, 120 - lineHeight), precision);
}

TEST_F(OnRealFonts, InkAlignmentKeepsInkThatSticksOutInsideTheBox) {
    // The tail of the j reaches left of its origin.
    const auto document = render::makeDocument({makeParagraph(L"jjj"), makeParagraph(L"HHH")});
    auto layouting = fonts::CRichTextDocumentLayoutingFactory(service.get()).create(document);
    layouting->setLayoutRect(wideBox);
    layouting->setAlignByTextBounds(true);
    layouting->layout();
    const double overhang = -service->getTextGeometryRect(L"jjj", L"DejaVu Sans", 10, {}, {}).xmin;
    ASSERT_GT(overhang, 0.0);
    EXPECT_NEAR(layouting->getRects().at(0).xmin, overhang, precision);
    EXPECT_NEAR(layouting->getRects().at(1).xmin, overhang, precision);
}

TEST_F(OnRealFonts, DxfLayoutingPutsTheBoxWhereTheInkIs) {
    const auto document = render::makeDocument({makeParagraph(L"HHH")});
    auto layouting = fonts::CRichTextDocumentLayoutingFactory(service.get()).createForDxfMTexts(document);
    layouting->setLayoutRect(MbRect(10, 20, 210, 120));
    layouting->layout();
    const MbRect ink = service->getParagraphGeometryRects(document, 200, 100).at(0);
    const MbRect rect = layouting->getRects().at(0);
    EXPECT_NEAR(rect.xmin, 10 + ink.xmin, precision);
    EXPECT_NEAR(rect.ymax, 120 + ink.ymax, precision);
    EXPECT_NEAR(rect.xmax - rect.xmin, 200, precision);
}

// ---- clusters ----

TEST_F(OnRealFonts, LatinLigaturesAreOneClusterEach) {
    const auto layouting = layOutClusters(render::makeDocument({makeParagraph(L"office")}), wideBox);
    EXPECT_THAT(clusterTexts(*layouting), ElementsAre(L"o", L"ffi", L"c", L"e"));
    // o, then the ligature at its advance of 1253 units.
    EXPECT_NEAR(layouting->getRects().at(1).xmin -
                    service->getTextGeometryRect(L"ffi", L"DejaVu Sans", 10, {}, {}).xmin,
                1253 * unit, precision);
}

TEST_F(OnRealFonts, AClustersRectangleIsItsTextsBoxOneUnitWiderAboveItsGlyph) {
    const auto layouting = layOutClusters(render::makeDocument({makeParagraph(L"AH")}), MbRect(50, 0, 250, 100));
    const MbRect rect = layouting->getRects().at(1);
    const MbRect box = service->getTextRect(L"H", L"DejaVu Sans", 10, {});
    const MbRect ink = service->getTextGeometryRect(L"H", L"DejaVu Sans", 10, {}, {});
    const double baseline = 100 + service->getTextBaseline(L"AH", L"DejaVu Sans", 10, {}, {});
    EXPECT_NEAR(rect.xmin, 50 + 1401 * unit + ink.xmin, precision);
    EXPECT_NEAR(rect.xmax - rect.xmin, box.xmax + 1.0, precision);
    EXPECT_NEAR(rect.ymax, baseline + 10.0, precision);
    EXPECT_NEAR(rect.ymax - rect.ymin, box.ymax - box.ymin, precision);
}

TEST_F(OnRealFonts, ArabicLigaturesAndRightToLeftRunsAreCutIntoClusters) {
    render::CRichTextParagraph paragraph = makeParagraph(L"\u0633\u0644\u0627\u0645", Left, Top, L"Noto Sans Arabic");
    const auto layouting = layOutClusters(render::makeDocument({paragraph}), wideBox);
    EXPECT_THAT(clusterTexts(*layouting), ElementsAre(L"\u0633", L"\u0644\u0627", L"\u0645"));
    // Clusters follow each other by their advances, in reading order.
    const std::vector<fonts::SGlyphRunDesc> runs = glyphRuns(paragraph);
    ASSERT_THAT(runs, SizeIs(1));
    EXPECT_TRUE(std::is_sorted(runs[0].glyphOrigins.begin(), runs[0].glyphOrigins.end(),
                               [](const MbCartPoint& left, const MbCartPoint& right) { return left.x < right.x; }));
}

TEST_F(OnRealFonts, ACharacterOfSeveralGlyphsIsOneClusterAtItsFirstGlyph) {
    // Devanagari O with anusvara: the vowel sign and the dot are glyphs of the cluster.
    const auto devanagari = layOutClusters(
        render::makeDocument({makeParagraph(L"\u0915\u094b\u0902", Left, Top, L"Noto Sans Devanagari")}), wideBox);
    EXPECT_THAT(clusterTexts(*devanagari), ElementsAre(L"\u0915\u094b\u0902"));
    // Thai SARA AM is drawn as two glyphs around the tone mark.
    const auto paragraph = makeParagraph(L"\u0e19\u0e49\u0e33", Left, Top, L"Noto Sans Thai");
    const auto thai = layOutClusters(render::makeDocument({paragraph}), wideBox);
    EXPECT_THAT(clusterTexts(*thai), ElementsAre(L"\u0e19\u0e49\u0e33"));
    EXPECT_THAT(glyphRuns(paragraph).at(0).glyphOrigins, SizeIs(4));
}

TEST_F(OnRealFonts, CombiningMarksAndSurrogatePairsStayWithTheirClusters) {
    const auto layouting =
        layOutClusters(render::makeDocument({makeParagraph(L"x\u0303\u0304y\xd835\xdd38z")}), wideBox);
    EXPECT_THAT(clusterTexts(*layouting), ElementsAre(L"x\u0303\u0304", L"y", L"\xd835\xdd38", L"z"));
}

TEST_F(OnRealFonts, ClustersOfAllLinesJoinedAreTheText) {
    const auto layouting = layOutClusters(render::makeDocument({makeParagraph(pangram)}), MbRect(0, 0, 120, 500));
    std::wstring joined;
    for (const std::wstring& text : clusterTexts(*layouting))
        joined += text;
    EXPECT_EQ(joined, pangram);
    std::set<double> tops;
    for (const MbRect& rect : layouting->getRects())
        tops.insert(std::round(rect.ymax * 100));
    EXPECT_GE(tops.size(), 3u);
    EXPECT_LE(tops.size(), 6u);
}

TEST_F(OnRealFonts, SpacesAreClustersFarAwayAndTabsAreNone) {
    const auto layouting = layOutClusters(render::makeDocument({makeParagraph(L"a b\tc")}), wideBox);
    EXPECT_THAT(clusterTexts(*layouting), ElementsAre(L"a", L" ", L"b", L"c"));
    EXPECT_EQ(layouting->getRects().at(1).xmin, 1e300);
    EXPECT_NEAR(layouting->getRects().at(3).xmin,
                40.0 + service->getTextGeometryRect(L"c", L"DejaVu Sans", 10, {}, {}).xmin, precision);
}

TEST_F(OnRealFonts, AnEmptyParagraphHasNoClustersAndTheNextStandsBelowIt) {
    const auto layouting = layOutClusters(render::makeDocument({makeParagraph(L""), makeParagraph(L"H")}), wideBox);
    EXPECT_THAT(clusterTexts(*layouting), ElementsAre(L"H"));
    EXPECT_NEAR(layouting->getRects().at(0).ymax, 500 - lineHeight - 1901 * unit + 10, snapping);
}

TEST_F(OnRealFonts, UnderlinesOfClustersAreRegionsInTheBox) {
    render::CRichTextParagraph paragraph = makeParagraph(L"HH  ");
    paragraph.tokens[0].fontStyle.underline = true;
    const auto layouting = layOutClusters(render::makeDocument({paragraph}), MbRect(50, 0, 250, 100));
    ASSERT_THAT(layouting->getRegions(), SizeIs(1));
    const MbRect bar = layouting->getRegions()[0]->boundingRect();
    EXPECT_NEAR(bar.xmin, 50.0, precision);
    EXPECT_NEAR(bar.xmax, 50.0 + 2 * 1540 * unit + 2 * spaceAdvance, precision);
    EXPECT_NEAR(bar.ymax, 100 - (1901 + 40) * unit, snapping);
    for (const render::CRichTextParagraph& cluster : layouting->getParagraphs())
        EXPECT_TRUE(cluster.tokens.at(0).fontStyle.underline);
}

TEST_F(OnRealFonts, JustifiedLinesReachBothEdges) {
    const auto runs = glyphRuns(makeParagraph(pangram, Justify), 120.0);
    const std::vector<double> baselines = baselinesOf(runs);
    ASSERT_GE(baselines.size(), 3u);
    double inkRight = 0.0;
    for (const fonts::SGlyphRunDesc& run : runs)
        if (run.baselineOrigin.y == baselines.front())
            inkRight = std::max(inkRight, run.bounds.xmax);
    // The first line ends in "brown", and an n has 174 units of space on its right.
    EXPECT_NEAR(inkRight, 120.0 - 174 * unit, 1e-3);
}

TEST_F(OnRealFonts, MeasuringTwiceGivesTheSame) {
    const auto document = render::makeDocument({makeParagraph(pangram, Justify), makeParagraph(L"\u56f3 office")});
    EXPECT_EQ(service->getParagraphRects(document, 120, 0), service->getParagraphRects(document, 120, 0));
    EXPECT_EQ(service->getParagraphGeometryRects(document, 120, 0),
              service->getParagraphGeometryRects(document, 120, 0));
    EXPECT_EQ(runTexts(glyphRuns(document.paragraphs.at(1))), runTexts(glyphRuns(document.paragraphs.at(1))));
}
