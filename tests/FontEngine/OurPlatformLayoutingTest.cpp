// What our platform decides about layout where others decide otherwise (see docs/parity.md): spaces at a line's end
// are drawn like any text, so are the characters that end lines, and which font stands in for one without a character.

#include <gmock/gmock.h>

#include "OnRealFonts.h"

using namespace testdocuments;
using testing::SizeIs;

namespace {

// Liberation Sans: capitals 1409 high, the underline 67 below the baseline and 150 thick.
constexpr double unit = 10.0 / 1409.0;
constexpr double spaceAdvance = 569 * unit;

using OurPlatform = OnRealFonts;

} // namespace

TEST_F(OurPlatform, RunsOfAllLinesJoinedAreTheTextWithTheSpacesThatLinesEndIn) {
    const auto runs = glyphRuns(makeParagraph(pangram), 120.0);
    ASSERT_GE(baselinesOf(runs).size(), 3u);
    EXPECT_EQ(joined(runs), pangram);
    EXPECT_EQ(joined(glyphRuns(makeParagraph(L"a  "))), L"a  ");
}

TEST_F(OurPlatform, ClustersOfAllLinesJoinedAreTheTextWithTheSpacesThatLinesEndIn) {
    const auto layouting = layOutClusters(render::makeDocument({makeParagraph(pangram)}), MbRect(0, 0, 120, 500));
    std::wstring text;
    for (const std::wstring& cluster : clusterTexts(*layouting))
        text += cluster;
    EXPECT_EQ(text, pangram);
}

// DejaVu Sans: ascent 1901, capitals 1493 high.
TEST_F(OurPlatform, ASmallTextsBaselineNeedsItsLayoutScale) {
    constexpr float capSize = 0.0025f;
    constexpr double baseline = -capSize * 1901.0 / 1493.0;
    EXPECT_EQ(service->getTextBaseline(L"Ag", L"DejaVu Sans", capSize, {}, {}), 0.0);

    const double scale = fonts::layoutScale(capSize);
    const auto enlarged = static_cast<float>(capSize * scale);
    EXPECT_NEAR(service->getTextBaseline(L"Ag", L"DejaVu Sans", enlarged, {}, {}) / scale, baseline, capSize / 6400);
}

TEST_F(OurPlatform, EnlargedTextIsAsManyTimesAsWideToTheLastBitAndBreaksWhereItDid) {
    const auto document =
        render::makeDocument({makeParagraph(pangram, eRichTextParagraphAlignment::Left,
                                            eRichTextParagraphVerticalAlignment::Top, L"DejaVu Sans", 0.0025f)});
    const double scale = fonts::layoutScale(0.0025);
    const auto enlarged = fonts::scaledDocument(document, scale);
    const double width = 0.03;
    const MbRect box = service->getParagraphRects(document, width, 0).at(0);
    const MbRect enlargedBox = service->getParagraphRects(enlarged, width * scale, 0).at(0);
    EXPECT_EQ(enlargedBox.xmax, box.xmax * scale);
    EXPECT_EQ(enlargedBox.ymin, box.ymin * scale);
}

TEST_F(OurPlatform, WithoutABoxARightBottomParagraphLiesLeftOfTheOriginAndAboveIt) {
    const auto rectOf = [this](eRichTextParagraphAlignment alignment, eRichTextParagraphVerticalAlignment vertical) {
        const auto document = render::makeDocument({makeParagraph(L"abc def", alignment, vertical)});
        return service->getParagraphRects(document, 0, 0).at(0);
    };
    const MbRect leftTop = rectOf(eRichTextParagraphAlignment::Left, eRichTextParagraphVerticalAlignment::Top);
    const MbRect rightBottom = rectOf(eRichTextParagraphAlignment::Right, eRichTextParagraphVerticalAlignment::Bottom);
    EXPECT_EQ(rightBottom, MbRect(-leftTop.xmax, 0.0, 0.0, -leftTop.ymin));
}

TEST_F(OurPlatform, CharactersThatEndLinesAreInTheRuns) {
    const std::wstring text = L"a\x85"
                              L"b\x2028"
                              L"c\nd";
    EXPECT_EQ(joined(glyphRuns(makeParagraph(text))), text);
}

TEST_F(OurPlatform, UnderlinedTrailingSpacesAreCoveredByTheBar) {
    const render::CRichTextParagraph paragraph = underlined(L"H  ");
    std::vector<boost::intrusive_ptr<MbRegion>> regions;
    const std::vector<fonts::SGlyphRunDesc> runs = service->getGlyphRuns(paragraph, 0, 0, {}, regions);
    ASSERT_THAT(regions, SizeIs(1));
    const double width = 1479 * unit + 2 * spaceAdvance;
    const double baseline = runs.at(0).baselineOrigin.y;
    const MbRect bar(0.0, baseline - (67 + 150) * unit, width, baseline - 67 * unit);
    expectNear(regions[0]->boundingRect(), bar, precision);
    const MbRect ink = service->getParagraphGeometryRects(render::makeDocument({paragraph}), 0, 0).at(0);
    EXPECT_NEAR(ink.xmax, width, precision);
    EXPECT_NEAR(ink.ymin, bar.ymin, precision);
}

TEST_F(OurPlatform, UnderlinedSpacesHaveTheBarAloneForInk) {
    const auto document = render::makeDocument({underlined(L"  ")});
    const MbRect ink = service->getParagraphGeometryRects(document, 0, 0).at(0);
    EXPECT_NEAR(ink.xmax - ink.xmin, 2 * spaceAdvance, precision);
    EXPECT_NEAR(ink.ymax - ink.ymin, 150 * unit, precision);
}

TEST_F(OurPlatform, UnderlinesOfClustersCoverTheSpacesThatLinesEndIn) {
    const auto layouting = layOutClusters(render::makeDocument({underlined(L"HH  ")}), MbRect(50, 0, 250, 100));
    ASSERT_THAT(layouting->getRegions(), SizeIs(1));
    const MbRect bar = layouting->getRegions()[0]->boundingRect();
    EXPECT_NEAR(bar.xmin, 50.0, precision);
    EXPECT_NEAR(bar.xmax, 50.0 + 2 * 1479 * unit + 2 * spaceAdvance, precision);
}

TEST_F(OurPlatform, AWrappingParagraphWithoutAWidthStaysOnOneLine) {
    EXPECT_THAT(baselinesOf(glyphRuns(makeParagraph(pangram))), SizeIs(1));
}

// Elsewhere outlines come from a rasterizer, with edges up to half a pixel off at sizes like this one.
TEST_F(OurPlatform, InkIsExactAtAnySize) {
    for (const wchar_t* family : {L"DejaVu Sans", L"DejaVu Serif", L"Liberation Sans", L"Noto Sans", L"Noto Serif"}) {
        const MbRect ink = service->getTextGeometryRect(L"H", family, 7.5f, {}, {});
        // Fonts may draw an H some units higher or lower than they state.
        EXPECT_NEAR(ink.ymax - ink.ymin, 7.5, 0.01) << family;
    }
}
