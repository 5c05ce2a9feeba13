#include <d2d1.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <oslayer/com_ptr.h>

#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "fonts/GlyphOutlineSink.h"

// A run's outline reaches a path as whole glyphs or as curves; nobody must be able to tell which.

namespace platform {
namespace {

using oslayer::com_ptr;

/// A sink that passes everything on but keeps silent about glyphs, so that a face has to draw curves.
class CurvesOnly final : public ID2D1SimplifiedGeometrySink {
public:
    explicit CurvesOnly(ID2D1GeometrySink& sink) : m_sink(sink) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID /*riid*/, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE fillMode) override { m_sink.SetFillMode(fillMode); }
    void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT flags) override { m_sink.SetSegmentFlags(flags); }
    void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F start, D2D1_FIGURE_BEGIN begin) override {
        m_sink.BeginFigure(start, begin);
    }
    void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F* points, UINT count) override {
        m_sink.AddLines(points, count);
    }
    void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT count) override {
        m_sink.AddBeziers(beziers, count);
    }
    void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END end) override { m_sink.EndFigure(end); }
    HRESULT STDMETHODCALLTYPE Close() override { return m_sink.Close(); }

private:
    ID2D1GeometrySink& m_sink;
};

struct GlyphRun {
    CFontFace* face = nullptr;
    float emSize = 0.0F;
    std::vector<UINT16> glyphs;
    std::vector<FLOAT> advances;
    std::vector<DWRITE_GLYPH_OFFSET> offsets;
    bool rightToLeft = false;

    HRESULT drawTo(ID2D1SimplifiedGeometrySink& sink) const {
        return face->GetGlyphRunOutline(emSize, glyphs.data(), advances.empty() ? nullptr : advances.data(),
                                        offsets.empty() ? nullptr : offsets.data(), static_cast<UINT32>(glyphs.size()),
                                        FALSE, rightToLeft ? TRUE : FALSE, &sink);
    }
};

GlyphRun runOf(const wchar_t* family, std::u32string_view text, float emSize,
               DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL,
               DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL) {
    CFontFamily* const found = CFontCollection::system().findFamily(family);
    EXPECT_NE(found, nullptr);
    GlyphRun run;
    run.face = &found->match(weight, DWRITE_FONT_STRETCH_NORMAL, style).face();
    run.emSize = emSize;
    for (const char32_t c : text) {
        run.glyphs.push_back(run.face->nominalGlyph(c));
        EXPECT_NE(run.glyphs.back(), 0);
    }
    return run;
}

com_ptr<ID2D1PathGeometry> draw(const GlyphRun& run, bool asGlyphs) {
    com_ptr<ID2D1Factory> factory;
    EXPECT_EQ(D2D1CreateFactory(D2D1_FACTORY_TYPE_MULTI_THREADED, &factory), S_OK);
    com_ptr<ID2D1PathGeometry> geometry;
    com_ptr<ID2D1GeometrySink> sink;
    EXPECT_EQ(factory->CreatePathGeometry(&geometry), S_OK);
    EXPECT_EQ(geometry->Open(&sink), S_OK);
    CurvesOnly curves(*sink);
    EXPECT_EQ(run.drawTo(asGlyphs ? static_cast<ID2D1SimplifiedGeometrySink&>(*sink) : curves), S_OK);
    EXPECT_EQ(sink->Close(), S_OK);
    return geometry;
}

/// Positions are floats of a few hundred units on both roads but added up in different orders; a few of their last
/// places are 1e-4.
constexpr float tolerance = 2e-4F;

void expectSame(const D2D1_RECT_F& left, const D2D1_RECT_F& right) {
    EXPECT_NEAR(left.left, right.left, tolerance);
    EXPECT_NEAR(left.top, right.top, tolerance);
    EXPECT_NEAR(left.right, right.right, tolerance);
    EXPECT_NEAR(left.bottom, right.bottom, tolerance);
}

void expectSameOnBothRoads(const GlyphRun& run) {
    const com_ptr<ID2D1PathGeometry> glyphs = draw(run, true);
    const com_ptr<ID2D1PathGeometry> curves = draw(run, false);
    const D2D1_MATRIX_3X2_F transforms[] = {
        {1, 0, 0, 1, 0, 0},  {1, 0, 0, 1, 123.25F, -77.5F},     {2, 0, 0, -3, 1, 2},
        {0, 1, -1, 0, 5, 5}, {0.8F, 0.6F, -0.6F, 0.8F, 10, 20}, {1, 0.25F, 0.5F, 1, 0, 0}};
    for (const D2D1_MATRIX_3X2_F& transform : transforms) {
        D2D1_RECT_F ofGlyphs{};
        D2D1_RECT_F ofCurves{};
        EXPECT_EQ(glyphs->GetBounds(&transform, &ofGlyphs), S_OK);
        EXPECT_EQ(curves->GetBounds(&transform, &ofCurves), S_OK);
        EXPECT_LT(ofGlyphs.left, ofGlyphs.right);
        expectSame(ofGlyphs, ofCurves);
    }
    D2D1_RECT_F plain{};
    D2D1_RECT_F moved{};
    EXPECT_EQ(glyphs->GetBounds(nullptr, &plain), S_OK);
    EXPECT_EQ(glyphs->GetBounds(D2D1_MATRIX_3X2_F{1, 0, 0, 1, 1024, -512}, &moved), S_OK);
    expectSame(moved, {plain.left + 1024, plain.top - 512, plain.right + 1024, plain.bottom - 512});

    UINT32 glyphFigures = 0;
    UINT32 curveFigures = 0;
    EXPECT_EQ(glyphs->GetFigureCount(&glyphFigures), S_OK);
    EXPECT_EQ(curves->GetFigureCount(&curveFigures), S_OK);
    EXPECT_EQ(glyphFigures, curveFigures);
    UINT32 glyphSegments = 0;
    UINT32 curveSegments = 0;
    EXPECT_EQ(glyphs->GetSegmentCount(&glyphSegments), S_OK);
    EXPECT_EQ(curves->GetSegmentCount(&curveSegments), S_OK);
    EXPECT_EQ(glyphSegments, curveSegments);
}

TEST(GlyphLane, givesTheBoundsOfTrueTypeCurves) {
    expectSameOnBothRoads(runOf(L"DejaVu Sans", U"Grundriss 1:50 @&%", 10.0F));
}

TEST(GlyphLane, givesTheBoundsOfCompactFontFormatCurves) {
    expectSameOnBothRoads(runOf(L"Noto Sans CJK JP", U"図面の尺度Sg", 37.0F));
}

TEST(GlyphLane, givesTheBoundsOfSimulatedFaces) {
    expectSameOnBothRoads(
        runOf(L"Noto Sans CJK JP", U"図面Sg", 20.0F, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_OBLIQUE));
    expectSameOnBothRoads(runOf(L"Noto Music", U"\u266f", 20.0F, DWRITE_FONT_WEIGHT_BOLD));
}

TEST(GlyphLane, followsAdvancesOffsetsAndDirection) {
    GlyphRun run = runOf(L"DejaVu Sans", U"\u05d0\u05d1g", 12.5F);
    run.rightToLeft = true;
    expectSameOnBothRoads(run);
    run.advances = {8.25F, -3.5F, 40.0F};
    run.offsets = {{1.5F, 2.5F}, {-4.0F, 0.0F}, {0.0F, -9.75F}};
    expectSameOnBothRoads(run);
    run.rightToLeft = false;
    expectSameOnBothRoads(run);
}

// Design bounds as fontTools' BoundsPen gives them for DejaVuSans.ttf: H 201 0 1339 1493, g 113 -426 1114 1147.
TEST(GlyphLane, isExact) {
    GlyphRun run = runOf(L"DejaVu Sans", U"Hg", 2048.0F);
    D2D1_RECT_F bounds{};
    ASSERT_EQ(draw(run, true)->GetBounds(nullptr, &bounds), S_OK);
    const auto advance = static_cast<float>(run.face->advance(run.glyphs[0]));
    EXPECT_FLOAT_EQ(bounds.left, 201.0F);
    EXPECT_FLOAT_EQ(bounds.top, -1493.0F);
    EXPECT_FLOAT_EQ(bounds.right, advance + 1114.0F);
    EXPECT_FLOAT_EQ(bounds.bottom, 426.0F);
}

TEST(GlyphLane, leavesARunWithoutInkEmpty) {
    for (const bool asGlyphs : {true, false}) {
        const com_ptr<ID2D1PathGeometry> geometry = draw(runOf(L"DejaVu Sans", U"  \u00a0", 10.0F), asGlyphs);
        D2D1_RECT_F bounds{};
        ASSERT_EQ(geometry->GetBounds(D2D1_MATRIX_3X2_F{1, 0, 0, 1, 3, 4}, &bounds), S_OK);
        EXPECT_GT(bounds.left, bounds.right);
        UINT32 figures = 1;
        ASSERT_EQ(geometry->GetFigureCount(&figures), S_OK);
        EXPECT_EQ(figures, 0U);
    }
}

TEST(GlyphLane, reportsPlacesThatAreNotFinite) {
    for (const bool asGlyphs : {true, false}) {
        GlyphRun run = runOf(L"DejaVu Sans", U"ab", 10.0F);
        run.advances = {std::numeric_limits<float>::infinity(), 1.0F};
        com_ptr<ID2D1Factory> factory;
        com_ptr<ID2D1PathGeometry> geometry;
        com_ptr<ID2D1GeometrySink> sink;
        ASSERT_EQ(D2D1CreateFactory(D2D1_FACTORY_TYPE_MULTI_THREADED, &factory), S_OK);
        ASSERT_EQ(factory->CreatePathGeometry(&geometry), S_OK);
        ASSERT_EQ(geometry->Open(&sink), S_OK);
        CurvesOnly curves(*sink);
        run.drawTo(asGlyphs ? static_cast<ID2D1SimplifiedGeometrySink&>(*sink) : curves);
        EXPECT_EQ(sink->Close(), D2DERR_BAD_NUMBER);
    }
}

TEST(GlyphLane, standsBesideFiguresInOnePath) {
    com_ptr<ID2D1Factory> factory;
    com_ptr<ID2D1PathGeometry> geometry;
    com_ptr<ID2D1GeometrySink> sink;
    ASSERT_EQ(D2D1CreateFactory(D2D1_FACTORY_TYPE_MULTI_THREADED, &factory), S_OK);
    ASSERT_EQ(factory->CreatePathGeometry(&geometry), S_OK);
    ASSERT_EQ(geometry->Open(&sink), S_OK);
    ASSERT_EQ(runOf(L"DejaVu Sans", U"H", 2048.0F).drawTo(*sink), S_OK);
    sink->BeginFigure({-100, 50}, D2D1_FIGURE_BEGIN_FILLED);
    sink->AddLine({0, 60});
    sink->EndFigure(D2D1_FIGURE_END_CLOSED);
    ASSERT_EQ(sink->Close(), S_OK);
    D2D1_RECT_F bounds{};
    ASSERT_EQ(geometry->GetBounds(nullptr, &bounds), S_OK);
    expectSame(bounds, {-100, -1493, 1339, 60});
    ASSERT_EQ(geometry->GetBounds(D2D1_MATRIX_3X2_F{-1, 0, 0, 1, 0, 0}, &bounds), S_OK);
    expectSame(bounds, {-1339, -1493, 100, 60});
}

TEST(GlyphLane, takesNoGlyphInsideAFigureOrAfterTheEnd) {
    const GlyphRun run = runOf(L"DejaVu Sans", U"H", 10.0F);
    com_ptr<ID2D1Factory> factory;
    com_ptr<ID2D1PathGeometry> geometry;
    com_ptr<ID2D1GeometrySink> sink;
    ASSERT_EQ(D2D1CreateFactory(D2D1_FACTORY_TYPE_MULTI_THREADED, &factory), S_OK);
    ASSERT_EQ(factory->CreatePathGeometry(&geometry), S_OK);
    ASSERT_EQ(geometry->Open(&sink), S_OK);
    com_ptr<IGlyphOutlineSink> lane;
    ASSERT_EQ(sink->QueryInterface(&lane), S_OK);
    sink->BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
    lane->addGlyph(*run.face, run.glyphs[0], 1.0F, 0.0F, 0.0F);
    sink->EndFigure(D2D1_FIGURE_END_CLOSED);
    EXPECT_EQ(sink->Close(), D2DERR_WRONG_STATE);
    lane->reserveGlyphs(10);
    lane->addGlyph(*run.face, run.glyphs[0], 1.0F, 0.0F, 0.0F);
    EXPECT_EQ(sink->Close(), D2DERR_WRONG_STATE);
}

} // namespace
} // namespace platform
