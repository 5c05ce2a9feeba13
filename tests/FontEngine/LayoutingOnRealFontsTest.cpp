// The service and the layoutings on the pinned fonts: what single texts do in
// lines, boxes, tabs and clusters.

#include <algorithm>
#include <cmath>
#include <set>

#include <gmock/gmock.h>

#include "OnRealFonts.h"

using namespace testdocuments;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

constexpr auto Left = eRichTextParagraphAlignment::Left;
constexpr auto Right = eRichTextParagraphAlignment::Right;
constexpr auto Center = eRichTextParagraphAlignment::Center;
constexpr auto Justify = eRichTextParagraphAlignment::Justify;
constexpr auto Top = eRichTextParagraphVerticalAlignment::Top;

// Liberation Sans: 2048 units to the em, capitals 1409 high, lines 67 + 1854 + 434, the
// underline 67 below the baseline and 150 thick.
constexpr double unit = 10.0 / 1409.0;
constexpr double lineHeight = (67 + 1854 + 434) * unit;
constexpr double firstBaseline = -(67 + 1854) * unit;

std::vector<std::wstring> runTexts(const std::vector<fonts::SGlyphRunDesc>& runs) {
    std::vector<std::wstring> texts;
    for (const fonts::SGlyphRunDesc& run : runs)
        texts.push_back(run.text);
    return texts;
}

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
        EXPECT_NEAR(baselines[i], firstBaseline - static_cast<double>(i) * lineHeight, snapping);
    const MbRect rect = service->getParagraphRects(render::makeDocument({makeParagraph(pangram)}), 120.0, 0.0).at(0);
    EXPECT_NEAR(rect.ymax - rect.ymin, static_cast<double>(baselines.size()) * lineHeight, 10 * precision);
    EXPECT_LE(rect.xmax, 120.0);
    // Platforms may leave out the spaces that lines end in.
    EXPECT_EQ(withoutSpaces(joined(runs)), withoutSpaces(pangram));
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
    const double width = service->getTextRect(L"word", L"Liberation Sans", 10, {}).xmax;
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
    EXPECT_EQ(service->getTextBaseline(L"", L"Liberation Sans", 10, {}, {}), 0.0);
}

TEST_F(OnRealFonts, CapitalsAreAsHighAsAskedForInEveryFont) {
    // Asked for as high as they are in design units: see TextFacts.
    const std::pair<const wchar_t*, float> fonts[] = {
        {L"Liberation Sans", 1409.0f}, {L"Liberation Serif", 1341.0f}, {L"Noto Sans", 714.0f}, {L"Noto Serif", 714.0f}};
    for (const auto& [family, capHeight] : fonts) {
        const MbRect ink = service->getTextGeometryRect(L"H", family, capHeight, {}, {});
        // Fonts may draw an H a unit higher or lower than they state.
        EXPECT_NEAR(ink.ymax - ink.ymin, capHeight, 1.0) << family;
    }
}

TEST_F(OnRealFonts, MixedScriptsAreSetInFontsThatHaveThem) {
    render::CRichTextParagraph paragraph = makeParagraph(L"Raum \u56f3\u9762 2");
    // Platforms differ in what a wrapping paragraph does without a width.
    paragraph.noWrap = true;
    const std::vector<fonts::SGlyphRunDesc> runs = glyphRuns(paragraph);
    for (const fonts::SGlyphRunDesc& run : runs) {
        const bool isJapanese = run.text.find(L'\u56f3') != std::wstring::npos;
        EXPECT_EQ(run.token.fontFamily == L"Liberation Sans", !isJapanese) << runs.size();
        EXPECT_EQ(run.token.text, run.text);
    }
    EXPECT_EQ(joined(runs), L"Raum \u56f3\u9762 2");
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

TEST_F(OnRealFonts, OneLineTextIsNeverUnderlined) {
    const render::SRichTextFontStyle underlined = {false, false, true};
    EXPECT_EQ(service->getTextGeometryRect(L"HH", L"Liberation Sans", 10, {}, underlined),
              service->getTextGeometryRect(L"HH", L"Liberation Sans", 10, {}, {}));
    EXPECT_EQ(service->getTextRect(L"HH", L"Liberation Sans", 10, underlined),
              service->getTextRect(L"HH", L"Liberation Sans", 10, {}));
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
    const double overhang = -service->getTextGeometryRect(L"jjj", L"Liberation Sans", 10, {}, {}).xmin;
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

TEST_F(OnRealFonts, ParagraphsWithoutInkHaveNoPlaceWhereInkIsAligned) {
    using enum eRichTextParagraphAlignment;
    using Vertical = eRichTextParagraphVerticalAlignment;
    const fonts::CRichTextDocumentLayoutingFactory layoutings(service.get());
    for (const auto alignment : {Default, Left, Right, Center, Justify}) {
        for (const auto vertical : {Vertical::Default, Vertical::Top, Vertical::Middle, Vertical::Bottom}) {
            const auto document = render::makeDocument(
                {makeParagraph(L"Ag", alignment, vertical), makeParagraph(L"  ", alignment, vertical)});
            const auto plain = layoutings.create(document);
            plain->setAlignByTextBounds(true);
            const auto dxf = layoutings.createForDxfMTexts(document);
            for (fonts::IRichTextDocumentLayouting* layouting : {plain.get(), dxf.get()}) {
                layouting->setLayoutRect(MbRect(0.0, -100.0, 60.0, 0.0));
                layouting->layout();
                const std::vector<render::CRichTextParagraph> paragraphs = layouting->getParagraphs();
                EXPECT_TRUE(fonts::hasPlace(*service, paragraphs.at(0), layouting->getRects().at(0)));
                EXPECT_FALSE(fonts::hasPlace(*service, paragraphs.at(1), layouting->getRects().at(1)));
            }
        }
    }
}

TEST_F(OnRealFonts, ClustersWithoutInkHaveNoPlaceUnderlinedOrNot) {
    const auto layouting = layOutClusters(render::makeDocument({underlined(L"a b")}), MbRect(0.0, -100.0, 60.0, 0.0));
    std::vector<bool> places;
    for (std::size_t i = 0; i < layouting->getRects().size(); ++i)
        places.push_back(fonts::hasPlace(*service, layouting->getParagraphs()[i], layouting->getRects()[i]));
    EXPECT_EQ(places, (std::vector<bool>{true, false, true}));
}

TEST_F(OnRealFonts, TwoParagraphsAndOneOfTheSameTokensHaveBoxesOfTheirOwn) {
    const auto paragraphOf = [](const std::vector<std::wstring>& texts) {
        render::CRichTextParagraph paragraph;
        for (const std::wstring& text : texts)
            paragraph.tokens.push_back(render::makeToken(text, L"DejaVu Sans", 10.0f, {}));
        return paragraph;
    };
    const auto one = render::makeDocument({paragraphOf({L"Room", L"101"})});
    const auto two = render::makeDocument({paragraphOf({L"Room"}), paragraphOf({L"101"})});
    const MbRect oneLine = service->getDocumentRect(one);
    const MbRect twoLines = service->getDocumentRect(two);
    EXPECT_NEAR(twoLines.ymin, 2.0 * oneLine.ymin, precision);
    EXPECT_LT(twoLines.xmax, oneLine.xmax);
    EXPECT_EQ(fonts::createTextMetricsService(engine.get())->getDocumentRect(two), twoLines);
}

TEST_F(OnRealFonts, LatinLigaturesAreOneClusterEach) {
    // In design units: Noto Sans has capitals of 714.
    const auto paragraph = makeParagraph(L"office", Left, Top, L"Noto Sans", 714.0f);
    const auto layouting = layOutClusters(render::makeDocument({paragraph}), MbRect(0, 0, 20000, 5000));
    EXPECT_THAT(clusterTexts(*layouting), ElementsAre(L"o", L"ffi", L"c", L"e"));
    // o, then the ligature at its advance of 605 units.
    EXPECT_NEAR(layouting->getRects().at(1).xmin -
                    service->getTextGeometryRect(L"ffi", L"Noto Sans", 714.0f, {}, {}).xmin,
                605.0, 0.01);
}

TEST_F(OnRealFonts, AClustersRectangleIsItsTextsBoxOneUnitWiderAboveItsGlyph) {
    const auto layouting = layOutClusters(render::makeDocument({makeParagraph(L"AH")}), MbRect(50, 0, 250, 100));
    const MbRect rect = layouting->getRects().at(1);
    const MbRect box = service->getTextRect(L"H", L"Liberation Sans", 10, {});
    const MbRect ink = service->getTextGeometryRect(L"H", L"Liberation Sans", 10, {}, {});
    const double baseline = 100 + service->getTextBaseline(L"AH", L"Liberation Sans", 10, {}, {});
    EXPECT_NEAR(rect.xmin, 50 + 1366 * unit + ink.xmin, precision);
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

TEST_F(OnRealFonts, CombiningMarksAndSurrogatePairsStayWithTheirClusters) {
    const auto marks =
        layOutClusters(render::makeDocument({makeParagraph(L"x\u0303\u0304y", Left, Top, L"Noto Sans")}), wideBox);
    EXPECT_THAT(clusterTexts(*marks), ElementsAre(L"x\u0303\u0304", L"y"));
    const auto pairs =
        layOutClusters(render::makeDocument({makeParagraph(L"\xd835\xdd38z", Left, Top, L"Noto Sans Math")}), wideBox);
    EXPECT_THAT(clusterTexts(*pairs), ElementsAre(L"\xd835\xdd38", L"z"));
}

TEST_F(OnRealFonts, ClustersOfAllLinesJoinedAreTheText) {
    const auto layouting = layOutClusters(render::makeDocument({makeParagraph(pangram)}), MbRect(0, 0, 120, 500));
    std::wstring text;
    for (const std::wstring& cluster : clusterTexts(*layouting))
        text += cluster;
    // Platforms may leave out the spaces that lines end in.
    EXPECT_EQ(withoutSpaces(text), withoutSpaces(pangram));
    std::set<double> tops;
    for (const MbRect& rect : layouting->getRects())
        tops.insert(std::round(rect.ymax * 100));
    EXPECT_GE(tops.size(), 3u);
    EXPECT_LE(tops.size(), 6u);
}

TEST_F(OnRealFonts, SpacesAreClustersFarAway) {
    const auto layouting = layOutClusters(render::makeDocument({makeParagraph(L"a b")}), wideBox);
    EXPECT_THAT(clusterTexts(*layouting), ElementsAre(L"a", L" ", L"b"));
    EXPECT_EQ(layouting->getRects().at(1).xmin, 1e300);
}

TEST_F(OnRealFonts, AnEmptyParagraphHasNoClustersAndTheNextStandsBelowIt) {
    const auto layouting = layOutClusters(render::makeDocument({makeParagraph(L""), makeParagraph(L"H")}), wideBox);
    EXPECT_THAT(clusterTexts(*layouting), ElementsAre(L"H"));
    EXPECT_NEAR(layouting->getRects().at(0).ymax, 500 - lineHeight + firstBaseline + 10, snapping);
}

TEST_F(OnRealFonts, UnderlinesOfClustersAreRegionsInTheBox) {
    const auto layouting = layOutClusters(render::makeDocument({underlined(L"HH")}), MbRect(50, 0, 250, 100));
    ASSERT_THAT(layouting->getRegions(), SizeIs(1));
    const MbRect bar = layouting->getRegions()[0]->boundingRect();
    expectNear(
        bar,
        MbRect(50.0, 100 + firstBaseline - (67 + 150) * unit, 50.0 + 2 * 1479 * unit, 100 + firstBaseline - 67 * unit),
        snapping);
    for (const render::CRichTextParagraph& cluster : layouting->getParagraphs())
        EXPECT_TRUE(cluster.tokens.at(0).fontStyle.underline);
}

TEST_F(OnRealFonts, MeasuringTwiceGivesTheSame) {
    const auto document = render::makeDocument({makeParagraph(pangram, Justify), makeParagraph(L"\u56f3 office")});
    EXPECT_EQ(service->getParagraphRects(document, 120, 0), service->getParagraphRects(document, 120, 0));
    EXPECT_EQ(service->getParagraphGeometryRects(document, 120, 0),
              service->getParagraphGeometryRects(document, 120, 0));
    EXPECT_EQ(runTexts(glyphRuns(document.paragraphs.at(1))), runTexts(glyphRuns(document.paragraphs.at(1))));
}
