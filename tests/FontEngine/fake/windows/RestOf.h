#pragma once

// What the system's interfaces have beyond those that the fake answers. The library
// calls none of it.

#include <d2d1.h>
#include <dwrite_2.h>

namespace fake {

HRESULT unexpected(const char* operation);

// An interface with everything implemented that the fake has no answer for.
template <typename Interface>
class RestOf : public Interface {};

template <>
class RestOf<IDWriteFont> : public IDWriteFont {
public:
    BOOL STDMETHODCALLTYPE IsSymbolFont() override {
        unexpected("IsSymbolFont");
        return {};
    }
};

template <>
class RestOf<IDWriteFontFace> : public IDWriteFontFace {
public:
    DWRITE_FONT_FACE_TYPE STDMETHODCALLTYPE GetType() override {
        unexpected("GetType");
        return {};
    }
    HRESULT STDMETHODCALLTYPE GetFiles(UINT32*, IDWriteFontFile**) override { return unexpected("GetFiles"); }
    UINT32 STDMETHODCALLTYPE GetIndex() override {
        unexpected("GetIndex");
        return {};
    }
    BOOL STDMETHODCALLTYPE IsSymbolFont() override {
        unexpected("IsSymbolFont");
        return {};
    }
    HRESULT STDMETHODCALLTYPE TryGetFontTable(UINT32, const void**, UINT32*, void**, BOOL*) override {
        return unexpected("TryGetFontTable");
    }
    void STDMETHODCALLTYPE ReleaseFontTable(void*) override { unexpected("ReleaseFontTable"); }
    HRESULT STDMETHODCALLTYPE GetRecommendedRenderingMode(FLOAT, FLOAT, DWRITE_MEASURING_MODE, IDWriteRenderingParams*,
                                                          DWRITE_RENDERING_MODE*) override {
        return unexpected("GetRecommendedRenderingMode");
    }
    HRESULT STDMETHODCALLTYPE GetGdiCompatibleMetrics(FLOAT, FLOAT, const DWRITE_MATRIX*,
                                                      DWRITE_FONT_METRICS*) override {
        return unexpected("GetGdiCompatibleMetrics");
    }
    HRESULT STDMETHODCALLTYPE GetGdiCompatibleGlyphMetrics(FLOAT, FLOAT, const DWRITE_MATRIX*, BOOL, const UINT16*,
                                                           UINT32, DWRITE_GLYPH_METRICS*, BOOL) override {
        return unexpected("GetGdiCompatibleGlyphMetrics");
    }
};

template <>
class RestOf<IDWriteFactory2> : public IDWriteFactory2 {
public:
    HRESULT STDMETHODCALLTYPE CreateCustomFontCollection(IDWriteFontCollectionLoader*, const void*, UINT32,
                                                         IDWriteFontCollection**) override {
        return unexpected("CreateCustomFontCollection");
    }
    HRESULT STDMETHODCALLTYPE RegisterFontCollectionLoader(IDWriteFontCollectionLoader*) override {
        return unexpected("RegisterFontCollectionLoader");
    }
    HRESULT STDMETHODCALLTYPE UnregisterFontCollectionLoader(IDWriteFontCollectionLoader*) override {
        return unexpected("UnregisterFontCollectionLoader");
    }
    HRESULT STDMETHODCALLTYPE CreateFontFileReference(const WCHAR*, const FILETIME*, IDWriteFontFile**) override {
        return unexpected("CreateFontFileReference");
    }
    HRESULT STDMETHODCALLTYPE CreateCustomFontFileReference(const void*, UINT32, IDWriteFontFileLoader*,
                                                            IDWriteFontFile**) override {
        return unexpected("CreateCustomFontFileReference");
    }
    HRESULT STDMETHODCALLTYPE CreateFontFace(DWRITE_FONT_FACE_TYPE, UINT32, IDWriteFontFile* const*, UINT32,
                                             DWRITE_FONT_SIMULATIONS, IDWriteFontFace**) override {
        return unexpected("CreateFontFace");
    }
    HRESULT STDMETHODCALLTYPE CreateRenderingParams(IDWriteRenderingParams**) override {
        return unexpected("CreateRenderingParams");
    }
    HRESULT STDMETHODCALLTYPE CreateMonitorRenderingParams(HMONITOR, IDWriteRenderingParams**) override {
        return unexpected("CreateMonitorRenderingParams");
    }
    HRESULT STDMETHODCALLTYPE CreateCustomRenderingParams(FLOAT, FLOAT, FLOAT, DWRITE_PIXEL_GEOMETRY,
                                                          DWRITE_RENDERING_MODE, IDWriteRenderingParams**) override {
        return unexpected("CreateCustomRenderingParams");
    }
    HRESULT STDMETHODCALLTYPE RegisterFontFileLoader(IDWriteFontFileLoader*) override {
        return unexpected("RegisterFontFileLoader");
    }
    HRESULT STDMETHODCALLTYPE UnregisterFontFileLoader(IDWriteFontFileLoader*) override {
        return unexpected("UnregisterFontFileLoader");
    }
    HRESULT STDMETHODCALLTYPE GetGdiInterop(IDWriteGdiInterop**) override { return unexpected("GetGdiInterop"); }
    HRESULT STDMETHODCALLTYPE CreateGdiCompatibleTextLayout(const WCHAR*, UINT32, IDWriteTextFormat*, FLOAT, FLOAT,
                                                            FLOAT, const DWRITE_MATRIX*, BOOL,
                                                            IDWriteTextLayout**) override {
        return unexpected("CreateGdiCompatibleTextLayout");
    }
    HRESULT STDMETHODCALLTYPE CreateEllipsisTrimmingSign(IDWriteTextFormat*, IDWriteInlineObject**) override {
        return unexpected("CreateEllipsisTrimmingSign");
    }
    HRESULT STDMETHODCALLTYPE CreateTextAnalyzer(IDWriteTextAnalyzer**) override {
        return unexpected("CreateTextAnalyzer");
    }
    HRESULT STDMETHODCALLTYPE CreateNumberSubstitution(DWRITE_NUMBER_SUBSTITUTION_METHOD, const WCHAR*, BOOL,
                                                       IDWriteNumberSubstitution**) override {
        return unexpected("CreateNumberSubstitution");
    }
    HRESULT STDMETHODCALLTYPE CreateGlyphRunAnalysis(const DWRITE_GLYPH_RUN*, FLOAT, const DWRITE_MATRIX*,
                                                     DWRITE_RENDERING_MODE, DWRITE_MEASURING_MODE, FLOAT, FLOAT,
                                                     IDWriteGlyphRunAnalysis**) override {
        return unexpected("CreateGlyphRunAnalysis");
    }

    HRESULT STDMETHODCALLTYPE GetEudcFontCollection(IDWriteFontCollection**, BOOL) override {
        return unexpected("GetEudcFontCollection");
    }
    HRESULT STDMETHODCALLTYPE CreateCustomRenderingParams(FLOAT, FLOAT, FLOAT, FLOAT, DWRITE_PIXEL_GEOMETRY,
                                                          DWRITE_RENDERING_MODE, IDWriteRenderingParams1**) override {
        return unexpected("CreateCustomRenderingParams");
    }

    HRESULT STDMETHODCALLTYPE CreateFontFallbackBuilder(IDWriteFontFallbackBuilder**) override {
        return unexpected("CreateFontFallbackBuilder");
    }
    HRESULT STDMETHODCALLTYPE TranslateColorGlyphRun(FLOAT, FLOAT, const DWRITE_GLYPH_RUN*,
                                                     const DWRITE_GLYPH_RUN_DESCRIPTION*, DWRITE_MEASURING_MODE,
                                                     const DWRITE_MATRIX*, UINT32,
                                                     IDWriteColorGlyphRunEnumerator**) override {
        return unexpected("TranslateColorGlyphRun");
    }
    HRESULT STDMETHODCALLTYPE CreateCustomRenderingParams(FLOAT, FLOAT, FLOAT, FLOAT, DWRITE_PIXEL_GEOMETRY,
                                                          DWRITE_RENDERING_MODE, DWRITE_GRID_FIT_MODE,
                                                          IDWriteRenderingParams2**) override {
        return unexpected("CreateCustomRenderingParams");
    }
    HRESULT STDMETHODCALLTYPE CreateGlyphRunAnalysis(const DWRITE_GLYPH_RUN*, const DWRITE_MATRIX*,
                                                     DWRITE_RENDERING_MODE, DWRITE_MEASURING_MODE, DWRITE_GRID_FIT_MODE,
                                                     DWRITE_TEXT_ANTIALIAS_MODE, FLOAT, FLOAT,
                                                     IDWriteGlyphRunAnalysis**) override {
        return unexpected("CreateGlyphRunAnalysis");
    }
};

template <>
class RestOf<ID2D1Factory> : public ID2D1Factory {
public:
    HRESULT STDMETHODCALLTYPE ReloadSystemMetrics() override { return unexpected("ReloadSystemMetrics"); }
    void STDMETHODCALLTYPE GetDesktopDpi(FLOAT*, FLOAT*) override { unexpected("GetDesktopDpi"); }
    HRESULT STDMETHODCALLTYPE CreateRoundedRectangleGeometry(const D2D1_ROUNDED_RECT*,
                                                             ID2D1RoundedRectangleGeometry**) override {
        return unexpected("CreateRoundedRectangleGeometry");
    }
    HRESULT STDMETHODCALLTYPE CreateEllipseGeometry(const D2D1_ELLIPSE*, ID2D1EllipseGeometry**) override {
        return unexpected("CreateEllipseGeometry");
    }
    HRESULT STDMETHODCALLTYPE CreateGeometryGroup(D2D1_FILL_MODE, ID2D1Geometry**, UINT,
                                                  ID2D1GeometryGroup**) override {
        return unexpected("CreateGeometryGroup");
    }
    HRESULT STDMETHODCALLTYPE CreateTransformedGeometry(ID2D1Geometry*, const D2D1_MATRIX_3X2_F*,
                                                        ID2D1TransformedGeometry**) override {
        return unexpected("CreateTransformedGeometry");
    }
    HRESULT STDMETHODCALLTYPE CreateStrokeStyle(const D2D1_STROKE_STYLE_PROPERTIES*, const FLOAT*, UINT,
                                                ID2D1StrokeStyle**) override {
        return unexpected("CreateStrokeStyle");
    }
    HRESULT STDMETHODCALLTYPE CreateDrawingStateBlock(const D2D1_DRAWING_STATE_DESCRIPTION*, IDWriteRenderingParams*,
                                                      ID2D1DrawingStateBlock**) override {
        return unexpected("CreateDrawingStateBlock");
    }
    HRESULT STDMETHODCALLTYPE CreateWicBitmapRenderTarget(IWICBitmap*, const D2D1_RENDER_TARGET_PROPERTIES*,
                                                          ID2D1RenderTarget**) override {
        return unexpected("CreateWicBitmapRenderTarget");
    }
    HRESULT STDMETHODCALLTYPE CreateHwndRenderTarget(const D2D1_RENDER_TARGET_PROPERTIES*,
                                                     const D2D1_HWND_RENDER_TARGET_PROPERTIES*,
                                                     ID2D1HwndRenderTarget**) override {
        return unexpected("CreateHwndRenderTarget");
    }
    HRESULT STDMETHODCALLTYPE CreateDxgiSurfaceRenderTarget(IDXGISurface*, const D2D1_RENDER_TARGET_PROPERTIES*,
                                                            ID2D1RenderTarget**) override {
        return unexpected("CreateDxgiSurfaceRenderTarget");
    }
    HRESULT STDMETHODCALLTYPE CreateDCRenderTarget(const D2D1_RENDER_TARGET_PROPERTIES*,
                                                   ID2D1DCRenderTarget**) override {
        return unexpected("CreateDCRenderTarget");
    }
};

template <typename Geometry>
class RestOfGeometry : public Geometry {
public:
    HRESULT STDMETHODCALLTYPE GetWidenedBounds(FLOAT, ID2D1StrokeStyle*, const D2D1_MATRIX_3X2_F*, FLOAT,
                                               D2D1_RECT_F*) const override {
        return unexpected("GetWidenedBounds");
    }
    HRESULT STDMETHODCALLTYPE StrokeContainsPoint(D2D1_POINT_2F, FLOAT, ID2D1StrokeStyle*, const D2D1_MATRIX_3X2_F*,
                                                  FLOAT, BOOL*) const override {
        return unexpected("StrokeContainsPoint");
    }
    HRESULT STDMETHODCALLTYPE FillContainsPoint(D2D1_POINT_2F, const D2D1_MATRIX_3X2_F*, FLOAT, BOOL*) const override {
        return unexpected("FillContainsPoint");
    }
    HRESULT STDMETHODCALLTYPE CompareWithGeometry(ID2D1Geometry*, const D2D1_MATRIX_3X2_F*, FLOAT,
                                                  D2D1_GEOMETRY_RELATION*) const override {
        return unexpected("CompareWithGeometry");
    }
    HRESULT STDMETHODCALLTYPE Simplify(D2D1_GEOMETRY_SIMPLIFICATION_OPTION, const D2D1_MATRIX_3X2_F*, FLOAT,
                                       ID2D1SimplifiedGeometrySink*) const override {
        return unexpected("Simplify");
    }
    HRESULT STDMETHODCALLTYPE Tessellate(const D2D1_MATRIX_3X2_F*, FLOAT, ID2D1TessellationSink*) const override {
        return unexpected("Tessellate");
    }
    HRESULT STDMETHODCALLTYPE CombineWithGeometry(ID2D1Geometry*, D2D1_COMBINE_MODE, const D2D1_MATRIX_3X2_F*, FLOAT,
                                                  ID2D1SimplifiedGeometrySink*) const override {
        return unexpected("CombineWithGeometry");
    }
    HRESULT STDMETHODCALLTYPE Outline(const D2D1_MATRIX_3X2_F*, FLOAT, ID2D1SimplifiedGeometrySink*) const override {
        return unexpected("Outline");
    }
    HRESULT STDMETHODCALLTYPE ComputeArea(const D2D1_MATRIX_3X2_F*, FLOAT, FLOAT*) const override {
        return unexpected("ComputeArea");
    }
    HRESULT STDMETHODCALLTYPE ComputeLength(const D2D1_MATRIX_3X2_F*, FLOAT, FLOAT*) const override {
        return unexpected("ComputeLength");
    }
    HRESULT STDMETHODCALLTYPE ComputePointAtLength(FLOAT, const D2D1_MATRIX_3X2_F*, FLOAT, D2D1_POINT_2F*,
                                                   D2D1_POINT_2F*) const override {
        return unexpected("ComputePointAtLength");
    }
    HRESULT STDMETHODCALLTYPE Widen(FLOAT, ID2D1StrokeStyle*, const D2D1_MATRIX_3X2_F*, FLOAT,
                                    ID2D1SimplifiedGeometrySink*) const override {
        return unexpected("Widen");
    }
};

template <>
class RestOf<ID2D1PathGeometry> : public RestOfGeometry<ID2D1PathGeometry> {};

template <>
class RestOf<ID2D1RectangleGeometry> : public RestOfGeometry<ID2D1RectangleGeometry> {};

} // namespace fake
