// What every platform should do and Wine's DirectWrite does not: tabs have no width there, lines are not stretched,
// an underline over several lines is reported once, letters do not combine to clusters of several glyphs, and runs of
// more glyphs than 16 bits count make it crash, as do glyphs of an extreme size. So these tests do not run under Wine;
// see docs/parity.md.

#include <algorithm>
#include <limits>
#include <optional>

#include <gmock/gmock.h>

#include <oslayer/Errors.h>

#include "OnRealFonts.h"

using namespace testdocuments;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

constexpr auto Left = eRichTextParagraphAlignment::Left;
constexpr auto Justify = eRichTextParagraphAlignment::Justify;
constexpr auto Top = eRichTextParagraphVerticalAlignment::Top;

// Liberation Sans has capitals of 1409 units.
constexpr double unit = 10.0 / 1409.0;

using BeyondWine = OnRealFonts;

} // namespace

TEST_F(BeyondWine, TextAfterATabStandsAtTheNextTabStop) {
    const auto xOf = [&](const wchar_t* text, std::optional<double> tabStopWidth) {
        std::vector<boost::intrusive_ptr<MbRegion>> regions;
        return service->getGlyphRuns(makeParagraph(text), 0, 0, tabStopWidth, regions).back().baselineOrigin.x;
    };
    EXPECT_NEAR(xOf(L"a\tb", {}), 40.0, precision);
    EXPECT_NEAR(xOf(L"a\t\tb", {}), 80.0, precision);
    EXPECT_NEAR(xOf(L"a\tb", 25.0), 25.0, precision);
    EXPECT_NEAR(xOf(L"HHHHHH\tb", 25.0), 75.0, precision);
    const MbRect ink = service->getTextGeometryRect(L"\tH", L"Liberation Sans", 10, 30.0, {});
    EXPECT_NEAR(ink.xmin, 30.0 + 168 * unit, precision);
}

TEST_F(BeyondWine, TabsAreNoClustersAndMoveThoseAfterThem) {
    const auto layouting = layOutClusters(render::makeDocument({makeParagraph(L"a\tc")}), wideBox);
    EXPECT_THAT(clusterTexts(*layouting), ElementsAre(L"a", L"c"));
    EXPECT_NEAR(layouting->getRects().at(1).xmin,
                40.0 + service->getTextGeometryRect(L"c", L"Liberation Sans", 10, {}, {}).xmin, precision);
}

TEST_F(BeyondWine, JustifiedLinesReachBothEdges) {
    const auto runs = glyphRuns(makeParagraph(pangram, Justify), 120.0);
    const std::vector<double> baselines = baselinesOf(runs);
    ASSERT_GE(baselines.size(), 3u);
    double inkRight = 0.0;
    for (const fonts::SGlyphRunDesc& run : runs)
        if (run.baselineOrigin.y == baselines.front())
            inkRight = std::max(inkRight, run.bounds.xmax);
    // The first line ends in "brown", and an n has 133 units of space on its right.
    EXPECT_NEAR(inkRight, 120.0 - 133 * unit, 1e-3);
}

TEST_F(BeyondWine, EachUnderlinedLineHasABarOfItsOwn) {
    std::vector<boost::intrusive_ptr<MbRegion>> regions;
    const size_t lines = baselinesOf(service->getGlyphRuns(underlined(pangram), 120.0, 0, {}, regions)).size();
    EXPECT_GE(lines, 3u);
    EXPECT_THAT(regions, SizeIs(lines));
}

TEST_F(BeyondWine, ACharacterOfSeveralGlyphsIsOneClusterAtItsFirstGlyph) {
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

TEST_F(BeyondWine, AnUnknownFamilyIsSetInAnInstalledFontThatHasTheText) {
    for (const wchar_t* family : {L"No Such Family", L"", L"\xd800"}) {
        const auto runs = glyphRuns(makeParagraph(L"Hamburg", Left, Top, family));
        ASSERT_THAT(runs, SizeIs(1));
        // The family in the run is the one that was found, with glyphs for all of it.
        const std::wstring found = runs[0].token.fontFamily;
        EXPECT_NE(found, family);
        // Sizes of an unknown family go by the capitals of the engine's fallback font.
        const auto ownEngine = fonts::createFontEngine(found);
        const auto own = fonts::createTextMetricsService(ownEngine.get());
        EXPECT_EQ(own->getTextRect(L"Hamburg", family, 10, {}), own->getTextRect(L"Hamburg", found, 10, {}));
        EXPECT_EQ(own->getTextGeometryRect(L"Hamburg", family, 10, {}, {}),
                  own->getTextGeometryRect(L"Hamburg", found, 10, {}, {}));
    }
}

TEST_F(BeyondWine, AMillionCharactersInOneParagraph) {
    std::wstring text;
    while (text.size() < 1000000)
        text += L"lorem ipsum dolor ";
    text.resize(1000000);
    const auto document = render::makeDocument({makeParagraph(text)});
    const MbRect rect = service->getParagraphRects(document, 500.0, 0.0).at(0);
    EXPECT_LE(rect.xmax, 500.0);
    EXPECT_GT(rect.ymax - rect.ymin, 100000.0);

    size_t characters = 0;
    for (const fonts::SGlyphRunDesc& run : glyphRuns(document.paragraphs.at(0))) {
        ASSERT_EQ(run.textPosition, characters);
        ASSERT_EQ(run.clusterMap.size(), run.text.size());
        // One line without limits: the map's 16 bits reach only so far into a run.
        for (size_t i = 0; i < run.clusterMap.size(); ++i)
            ASSERT_EQ(run.clusterMap[i], i);
        characters += run.text.size();
    }
    EXPECT_EQ(characters, 1000000u);
}

TEST_F(BeyondWine, InkOfASizeAtTheEndOfTheRangeIsMeasured) {
    EXPECT_NO_THROW(static_cast<void>(service->getTextGeometryRect(L"text", L"Liberation Sans", 1e30f, {}, {})));
}

// Wine never comes back from drawing glyphs of that size.
TEST_F(BeyondWine, AnInfiniteSizeGivesAnInfiniteBoxAndItsInkIsAnError) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const MbRect rect = service->getTextRect(L"text", L"Liberation Sans", infinity, {});
    EXPECT_EQ(rect.xmax, infinity);
    EXPECT_EQ(rect.ymin, -infinity);
    const auto errorOf = [](auto&& action) -> std::string {
        try {
            action();
        } catch (const oslayer::EOsLayerError& error) {
            return error.what();
        }
        return "no error";
    };
    EXPECT_EQ(errorOf([&] {
                  static_cast<void>(service->getTextGeometryRect(L"text", L"Liberation Sans", infinity, {}, {}));
              }),
              "D2DERR_BAD_NUMBER");
    EXPECT_EQ(
        errorOf([&] { static_cast<void>(glyphRuns(makeParagraph(L"text", Left, Top, L"Liberation Sans", infinity))); }),
        "D2DERR_BAD_NUMBER");
}
