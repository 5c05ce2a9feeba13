#include "../../FontEngine/src/TextToGlyphRunRenderer.h"

#include <memory>

#include <gmock/gmock.h>

#include "GlyphRuns.h"
#include "fake/FakePlatform.h"

using fonts::CLocalTextToGlyphRunRenderer;
using fonts::CTextToGlyphRunRenderer;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

oslayer::com_ptr<ID2D1Factory> makeGeometryFactory() {
    oslayer::com_ptr<ID2D1Factory> factory;
    EXPECT_EQ(D2D1CreateFactory(D2D1_FACTORY_TYPE_MULTI_THREADED, __uuidof(ID2D1Factory), nullptr,
                                reinterpret_cast<void**>(&factory)),
              S_OK);
    fake::platform().calls.clear();
    return factory;
}

class Renderer : public fake::FakePlatformTest {
protected:
    // y down, around the baseline: 1 unit left of it to 8 units right, 12 up and 3 down.
    void giveOutline() { fake::platform().pathBounds = {-1.0f, -12.0f, 8.0f, 3.0f}; }

    HRESULT drawRun(const DrawnGlyphRun& run, FLOAT x, FLOAT y) {
        return run.draw(renderer, fake::platform().fontFace(), x, y);
    }

    // The fixture counts what is left over, so the renderer goes first.
    void TearDown() override {
        owned.reset();
        FakePlatformTest::TearDown();
    }

    std::unique_ptr<CLocalTextToGlyphRunRenderer> owned =
        std::make_unique<CLocalTextToGlyphRunRenderer>(makeGeometryFactory());
    CLocalTextToGlyphRunRenderer& renderer = *owned;
};

// Says when it goes.
class WatchedRenderer final : public CTextToGlyphRunRenderer {
public:
    explicit WatchedRenderer(bool& isGone) : CTextToGlyphRunRenderer(nullptr), m_isGone(isGone) {}
    ~WatchedRenderer() override { m_isGone = true; }

private:
    bool& m_isGone;
};

} // namespace

TEST_F(Renderer, AnswersForItsThreeInterfaces) {
    for (const IID& iid : {__uuidof(IUnknown), __uuidof(IDWritePixelSnapping), __uuidof(IDWriteTextRenderer)}) {
        void* object = nullptr;
        EXPECT_EQ(renderer.QueryInterface(iid, &object), S_OK);
        EXPECT_EQ(object, static_cast<IDWriteTextRenderer*>(&renderer));
        EXPECT_EQ(renderer.Release(), 0u);
    }
}

TEST_F(Renderer, AnyOtherInterfaceGivesEFailAndANullPointer) {
    void* object = &renderer;
    EXPECT_EQ(renderer.QueryInterface(__uuidof(IDWriteTextLayout), &object), E_FAIL);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(renderer.AddRef(), 1u);
    EXPECT_EQ(renderer.Release(), 0u);
}

TEST_F(Renderer, TheLastReleaseFreesOneOnTheHeap) {
    bool isGone = false;
    auto* onHeap = new WatchedRenderer(isGone);
    EXPECT_EQ(onHeap->AddRef(), 1u);
    EXPECT_EQ(onHeap->AddRef(), 2u);
    EXPECT_EQ(onHeap->Release(), 1u);
    EXPECT_FALSE(isGone);
    EXPECT_EQ(onHeap->Release(), 0u);
    EXPECT_TRUE(isGone);
}

TEST_F(Renderer, NoReleaseFreesOneOnTheStack) {
    giveOutline();
    ASSERT_EQ(drawRun({}, 0, 0), S_OK);
    EXPECT_EQ(renderer.AddRef(), 1u);
    EXPECT_EQ(renderer.Release(), 0u);
    EXPECT_THAT(renderer.glyphRuns(), SizeIs(1));
}

TEST_F(Renderer, AsksForSnappingToHundredthsWithYUp) {
    BOOL isDisabled = TRUE;
    EXPECT_EQ(renderer.IsPixelSnappingDisabled(nullptr, &isDisabled), S_OK);
    EXPECT_EQ(isDisabled, FALSE);
    DWRITE_MATRIX transform = {};
    EXPECT_EQ(renderer.GetCurrentTransform(nullptr, &transform), S_OK);
    EXPECT_EQ(transform.m11, 100.0f);
    EXPECT_EQ(transform.m12, 0.0f);
    EXPECT_EQ(transform.m21, 0.0f);
    EXPECT_EQ(transform.m22, -100.0f);
    EXPECT_EQ(transform.dx, 0.0f);
    EXPECT_EQ(transform.dy, 0.0f);
    FLOAT pixelsPerDip = 0.0f;
    EXPECT_EQ(renderer.GetPixelsPerDip(nullptr, &pixelsPerDip), S_OK);
    EXPECT_EQ(pixelsPerDip, 1.0f);
}

TEST_F(Renderer, StartsEmpty) {
    EXPECT_EQ(renderer.bounds(), MbRect());
    EXPECT_THAT(renderer.glyphRuns(), IsEmpty());
    EXPECT_THAT(renderer.decorationRegions(), IsEmpty());
}

TEST_F(Renderer, TakesARunsOutlineIntoAGeometryAndAsksForItsBounds) {
    giveOutline();
    DrawnGlyphRun run;
    run.offsets = {{0.5f, 1.0f}, {0.0f, 2.0f}};
    EXPECT_EQ(drawRun(run, 10, 20), S_OK);
    ASSERT_THAT(fake::platform().calls, SizeIs(5));
    EXPECT_EQ(fake::platform().calls[0], "D2DFactory.CreatePathGeometry()");
    EXPECT_EQ(fake::platform().calls[1], "Path.Open()");
    EXPECT_THAT(fake::platform().calls[2], testing::StartsWith("Face.GetGlyphRunOutline(16"));
    EXPECT_EQ(fake::platform().calls[3], "Sink.Close()");
    EXPECT_EQ(fake::platform().calls[4], "Path.GetBounds([1 0 0 1 10 20])");
    EXPECT_EQ(renderer.glyphRuns().at(0).bounds, MbRect(9.0, -23.0, 18.0, -8.0));
    EXPECT_EQ(renderer.bounds(), MbRect(9.0, -23.0, 18.0, -8.0));
}

TEST_F(Renderer, RecordsTextPositionBaselineAndClusterMap) {
    DrawnGlyphRun run;
    run.text = L"offi";
    run.textPosition = 7;
    run.clusterMap = {0, 1, 1, 1};
    EXPECT_EQ(drawRun(run, 10, 20), S_OK);
    const fonts::SGlyphRunDesc& recorded = renderer.glyphRuns().at(0);
    EXPECT_EQ(recorded.text, L"offi");
    EXPECT_EQ(recorded.textPosition, 7u);
    EXPECT_EQ(recorded.baselineOrigin, (MbCartPoint{10.0, -20.0}));
    EXPECT_THAT(recorded.clusterMap, ElementsAre(0, 1, 1, 1));
    EXPECT_EQ(recorded.token.text, L"");
    EXPECT_EQ(recorded.token.fontFamily, L"");
    EXPECT_EQ(recorded.token.fontCapSize, 0.0f);
    EXPECT_EQ(recorded.token.color, 0u);
    EXPECT_EQ(recorded.token.fontStyle, render::SRichTextFontStyle());
}

TEST_F(Renderer, WithoutOffsetsGlyphOriginsStandOnTheBaselineAtTheRunningSumOfAdvances) {
    DrawnGlyphRun run;
    run.glyphIndices = {1, 2, 3};
    run.advances = {5.0f, 0.25f, 4.0f};
    EXPECT_EQ(drawRun(run, 10, 20), S_OK);
    EXPECT_THAT(renderer.glyphRuns().at(0).glyphOrigins,
                ElementsAre(MbCartPoint{10.0, -20.0}, MbCartPoint{15.0, -20.0}, MbCartPoint{15.25, -20.0}));
}

TEST_F(Renderer, WithOffsetsEachGlyphOriginIsShiftedByItsOwn) {
    DrawnGlyphRun run;
    run.offsets = {{0.5f, 1.0f}, {-2.0f, -3.0f}};
    EXPECT_EQ(drawRun(run, 10, 20), S_OK);
    EXPECT_THAT(renderer.glyphRuns().at(0).glyphOrigins,
                ElementsAre(MbCartPoint{10.5, -19.0}, MbCartPoint{13.0, -23.0}));
}

TEST_F(Renderer, OriginsAreSummedUpInDoublePrecision) {
    DrawnGlyphRun run;
    run.glyphIndices = {1, 2, 3};
    run.advances = {0.1f, 0.1f, 0.1f};
    EXPECT_EQ(drawRun(run, 1000, 0), S_OK);
    EXPECT_EQ(renderer.glyphRuns().at(0).glyphOrigins.at(2).x,
              1000.0 + static_cast<double>(0.1f) + static_cast<double>(0.1f));
}

TEST_F(Renderer, TheOutlineIsAskedForRightToLeftWhenTheLevelIsOdd) {
    DrawnGlyphRun run;
    for (const UINT32 level : {0u, 1u, 2u, 3u}) {
        run.bidiLevel = level;
        ASSERT_EQ(drawRun(run, 0, 0), S_OK);
    }
    const std::vector<std::string> calls = fake::platform().callsTo("Face.GetGlyphRunOutline");
    ASSERT_THAT(calls, SizeIs(4));
    EXPECT_EQ(calls[0], calls[2]);
    EXPECT_EQ(calls[1], calls[3]);
    EXPECT_NE(calls[0], calls[1]);
}

TEST_F(Renderer, ARunWithoutOutlineHasEmptyBoundsAndLeavesTheInkBoxUnchanged) {
    DrawnGlyphRun spaces;
    spaces.text = L"  ";
    EXPECT_EQ(drawRun(spaces, 10, 20), S_OK);
    ASSERT_THAT(renderer.glyphRuns(), SizeIs(1));
    EXPECT_EQ(renderer.glyphRuns().at(0).bounds, MbRect());
    EXPECT_EQ(renderer.bounds(), MbRect());

    giveOutline();
    ASSERT_EQ(drawRun({}, 0, 0), S_OK);
    const MbRect before = renderer.bounds();
    fake::platform().pathBounds = {1.0f, 0.0f, -1.0f, 0.0f};
    ASSERT_EQ(drawRun(spaces, 50, 0), S_OK);
    EXPECT_EQ(renderer.bounds(), before);
}

TEST_F(Renderer, AnOutlineOfZeroWidthCounts) {
    fake::platform().pathBounds = {2.0f, -5.0f, 2.0f, 0.0f};
    EXPECT_EQ(drawRun({}, 0, 0), S_OK);
    EXPECT_EQ(renderer.bounds(), MbRect(2.0, 0.0, 2.0, 5.0));
}

TEST_F(Renderer, TheInkBoxIsTheUnionOfTheRuns) {
    giveOutline();
    ASSERT_EQ(drawRun({}, 0, 0), S_OK);
    ASSERT_EQ(drawRun({}, 100, 50), S_OK);
    EXPECT_EQ(renderer.bounds(), MbRect(-1.0, -53.0, 108.0, 12.0));
    EXPECT_THAT(renderer.glyphRuns(), SizeIs(2));
}

TEST_F(Renderer, AFailedOutlineStepIsReturnedWithTheRunRecordedAndItsBoundsEmpty) {
    giveOutline();
    const std::vector<std::string> steps = {"D2DFactory.CreatePathGeometry", "Path.Open", "Face.GetGlyphRunOutline",
                                            "Sink.Close", "Path.GetBounds"};
    for (size_t i = 0; i < steps.size(); ++i) {
        fake::platform().calls.clear();
        const auto result = static_cast<HRESULT>(E_OUTOFMEMORY - static_cast<HRESULT>(i));
        fake::platform().fail(steps[i], result);
        EXPECT_EQ(drawRun({}, 10, 20), result) << steps[i];
        EXPECT_THAT(fake::platform().calls, SizeIs(i + 1)) << "the step after " << steps[i] << " was made";
        ASSERT_THAT(renderer.glyphRuns(), SizeIs(i + 1));
        EXPECT_EQ(renderer.glyphRuns().back().bounds, MbRect()) << steps[i];
        EXPECT_THAT(renderer.glyphRuns().back().glyphOrigins, SizeIs(2)) << steps[i];
    }
    EXPECT_EQ(renderer.bounds(), MbRect());
}

TEST_F(Renderer, AnUnderlineIsARegionAndWidensTheInkBox) {
    giveOutline();
    ASSERT_EQ(drawRun({}, 10, 20), S_OK);
    // A bar that reaches beyond the glyphs, its top 2 units below the baseline.
    EXPECT_EQ(drawUnderline(renderer, 10, 20, 30.0f, 1.5f, 2.0f), S_OK);
    ASSERT_THAT(renderer.decorationRegions(), SizeIs(1));
    EXPECT_EQ(renderer.decorationRegions()[0]->boundingRect(), MbRect(10.0, -23.5, 40.0, -22.0));
    EXPECT_EQ(renderer.bounds(), MbRect(9.0, -23.5, 40.0, -8.0));
    EXPECT_EQ(drawUnderline(renderer, 50, 20, 5.0f, 1.0f, -2.0f), S_OK);
    ASSERT_THAT(renderer.decorationRegions(), SizeIs(2));
    EXPECT_EQ(renderer.decorationRegions()[1]->boundingRect(), MbRect(50.0, -19.0, 55.0, -18.0));
}

TEST_F(Renderer, AStrikethroughWidensTheInkBoxAndIsNoRegion) {
    EXPECT_EQ(drawStrikethrough(renderer, 10, 20, 30.0f, 1.0f, -5.0f), S_OK);
    EXPECT_THAT(fake::platform().calls, ElementsAre("D2DFactory.CreateRectangleGeometry([0 -5 30 -4])",
                                                    "Rectangle.GetBounds([1 0 0 1 10 20])"));
    EXPECT_EQ(renderer.bounds(), MbRect(10.0, -16.0, 40.0, -15.0));
    EXPECT_THAT(renderer.decorationRegions(), IsEmpty());
    EXPECT_THAT(renderer.glyphRuns(), IsEmpty());
}

TEST_F(Renderer, AStrikethroughReturnsTheResultOfTheLastCallMade) {
    fake::platform().fail("D2DFactory.CreateRectangleGeometry", E_OUTOFMEMORY);
    EXPECT_EQ(drawStrikethrough(renderer, 10, 20, 30.0f, 1.0f, -5.0f), E_OUTOFMEMORY);
    EXPECT_EQ(fake::platform().countOf("Rectangle.GetBounds"), 0u);
    fake::platform().fail("Rectangle.GetBounds", E_FAIL);
    EXPECT_EQ(drawStrikethrough(renderer, 10, 20, 30.0f, 1.0f, -5.0f), E_FAIL);
    EXPECT_EQ(renderer.bounds(), MbRect());
}

TEST_F(Renderer, AnInlineObjectIsNotDrawn) {
    EXPECT_EQ(renderer.DrawInlineObject(nullptr, 0, 0, nullptr, FALSE, FALSE, nullptr), E_NOTIMPL);
}

TEST_F(Renderer, TheRunsCanBeTakenOut) {
    ASSERT_EQ(drawRun({}, 0, 0), S_OK);
    EXPECT_THAT(std::move(renderer).glyphRuns(), SizeIs(1));
}

using RendererDeathTest = Renderer;

TEST_F(RendererDeathTest, WithoutAGeometryFactoryDrawingEndsTheProcess) {
    CLocalTextToGlyphRunRenderer withoutFactory(nullptr);
    EXPECT_DEATH(static_cast<void>(DrawnGlyphRun().draw(withoutFactory, fake::platform().fontFace(), 0, 0)), "");
    EXPECT_DEATH(static_cast<void>(drawStrikethrough(withoutFactory, 0, 0, 1, 1, 1)), "");
}
