#include "TextToGlyphRunRenderer.h"

#include <utility>

#include <geometry/aecmath.h>

namespace fonts {

namespace {

D2D1_MATRIX_3X2_F translation(FLOAT dx, FLOAT dy) {
    D2D1_MATRIX_3X2_F matrix = {};
    matrix.m11 = 1.0f;
    matrix.m22 = 1.0f;
    matrix.dx = dx;
    matrix.dy = dy;
    return matrix;
}

// Widens `bounds` (y up) by a rectangle of the platform (y down).
void include(MbRect& bounds, const D2D1_RECT_F& rect) {
    bounds.IncludeX(rect.left);
    bounds.IncludeX(rect.right);
    bounds.IncludeY(-rect.top);
    bounds.IncludeY(-rect.bottom);
}

std::vector<MbCartPoint> glyphOrigins(const DWRITE_GLYPH_RUN& glyphRun, FLOAT baselineOriginX, FLOAT baselineOriginY) {
    std::vector<MbCartPoint> origins;
    origins.reserve(glyphRun.glyphCount);
    double x = baselineOriginX;
    const double y = -baselineOriginY;
    for (UINT32 i = 0; i < glyphRun.glyphCount; ++i) {
        if (glyphRun.glyphOffsets) {
            // Ascender offsets point up already.
            const DWRITE_GLYPH_OFFSET& offset = glyphRun.glyphOffsets[i];
            origins.push_back({x + offset.advanceOffset, y + offset.ascenderOffset});
        } else {
            origins.push_back({x, y});
        }
        x += glyphRun.glyphAdvances[i];
    }
    return origins;
}

} // namespace

SGlyphOutlineBounds getGlyphRunOutlineBounds(const DWRITE_GLYPH_RUN& glyphRun, FLOAT baselineOriginX,
                                             FLOAT baselineOriginY, const oslayer::com_ptr<ID2D1Factory>& d2dFactory) {
    return getGlyphRunOutlineBounds(glyphRun, translation(baselineOriginX, baselineOriginY), d2dFactory);
}

SGlyphOutlineBounds getGlyphRunOutlineBounds(const DWRITE_GLYPH_RUN& glyphRun, const D2D1_MATRIX_3X2_F& placement,
                                             const oslayer::com_ptr<ID2D1Factory>& d2dFactory) {
    SGlyphOutlineBounds result;

    oslayer::com_ptr<ID2D1PathGeometry> pPathGeometry;
    result.hr = d2dFactory->CreatePathGeometry(&pPathGeometry);
    if (FAILED(result.hr))
        return result;

    oslayer::com_ptr<ID2D1GeometrySink> pSink;
    result.hr = pPathGeometry->Open(&pSink);
    if (FAILED(result.hr))
        return result;

    const BOOL isRightToLeft = (glyphRun.bidiLevel & 1) != 0;
    result.hr = glyphRun.fontFace->GetGlyphRunOutline(glyphRun.fontEmSize, glyphRun.glyphIndices,
                                                      glyphRun.glyphAdvances, glyphRun.glyphOffsets,
                                                      glyphRun.glyphCount, glyphRun.isSideways, isRightToLeft, pSink);
    if (FAILED(result.hr))
        return result;

    result.hr = pSink->Close();
    if (FAILED(result.hr))
        return result;

    D2D1_RECT_F rect = {};
    result.hr = pPathGeometry->GetBounds(placement, &rect);
    // Nothing drawn is reported as an inverted rectangle.
    if (SUCCEEDED(result.hr) && rect.left <= rect.right)
        include(result.bounds, rect);
    return result;
}

CTextToGlyphRunRenderer::CTextToGlyphRunRenderer(oslayer::com_ptr<ID2D1Factory> d2dFactory)
    : m_d2dFactory(std::move(d2dFactory)) {}

HRESULT CTextToGlyphRunRenderer::QueryInterface(REFIID riid, void** ppv) {
    if (riid == __uuidof(IUnknown) || riid == __uuidof(IDWritePixelSnapping) || riid == __uuidof(IDWriteTextRenderer)) {
        *ppv = static_cast<IDWriteTextRenderer*>(this);
        AddRef();
        return S_OK;
    }
    *ppv = nullptr;
    return E_FAIL;
}

ULONG CTextToGlyphRunRenderer::AddRef() {
    return ++m_refCount;
}

ULONG CTextToGlyphRunRenderer::Release() {
    const ULONG count = releaseReference();
    if (count == 0)
        delete this;
    return count;
}

HRESULT CTextToGlyphRunRenderer::IsPixelSnappingDisabled(void*, BOOL* isDisabled) {
    *isDisabled = FALSE;
    return S_OK;
}

// A hundred device pixels to the unit and y up: the platform snaps baselines to a
// grid of 0.01 units.
HRESULT CTextToGlyphRunRenderer::GetCurrentTransform(void*, DWRITE_MATRIX* transform) {
    *transform = {100.0f, 0.0f, 0.0f, -100.0f, 0.0f, 0.0f};
    return S_OK;
}

HRESULT CTextToGlyphRunRenderer::GetPixelsPerDip(void*, FLOAT* pixelsPerDip) {
    *pixelsPerDip = 1.0f;
    return S_OK;
}

HRESULT CTextToGlyphRunRenderer::DrawGlyphRun(void*, FLOAT baselineOriginX, FLOAT baselineOriginY,
                                              DWRITE_MEASURING_MODE, const DWRITE_GLYPH_RUN* glyphRun,
                                              const DWRITE_GLYPH_RUN_DESCRIPTION* glyphRunDescription, IUnknown*) {
    const SGlyphOutlineBounds outline =
        getGlyphRunOutlineBounds(*glyphRun, baselineOriginX, baselineOriginY, m_d2dFactory);
    m_bounds |= outline.bounds;

    SGlyphRunDesc& run = m_glyphRuns.emplace_back();
    run.text.assign(glyphRunDescription->string, glyphRunDescription->stringLength);
    run.textPosition = glyphRunDescription->textPosition;
    run.bounds = outline.bounds;
    run.baselineOrigin = {baselineOriginX, -baselineOriginY};
    run.glyphOrigins = glyphOrigins(*glyphRun, baselineOriginX, baselineOriginY);
    run.clusterMap.assign(glyphRunDescription->clusterMap,
                          glyphRunDescription->clusterMap + glyphRunDescription->stringLength);
    return outline.hr;
}

HRESULT CTextToGlyphRunRenderer::DrawUnderline(void*, FLOAT baselineOriginX, FLOAT baselineOriginY,
                                               const DWRITE_UNDERLINE* underline, IUnknown*) {
    // The bar hangs from its offset, which counts down from the baseline.
    MbRect rect;
    rect.Set(0.0, -underline->thickness, underline->width, 0.0);
    rect.Move(0.0, -underline->offset);
    rect.Move(baselineOriginX, -baselineOriginY);
    m_bounds |= rect;
    m_decorationRegions.push_back(aecmath::createRegionByRect(rect));
    return S_OK;
}

HRESULT CTextToGlyphRunRenderer::DrawStrikethrough(void*, FLOAT baselineOriginX, FLOAT baselineOriginY,
                                                   const DWRITE_STRIKETHROUGH* strikethrough, IUnknown*) {
    const D2D1_RECT_F bar = {0.0f, strikethrough->offset, strikethrough->width,
                             strikethrough->offset + strikethrough->thickness};
    oslayer::com_ptr<ID2D1RectangleGeometry> pRectangleGeometry;
    HRESULT hr = m_d2dFactory->CreateRectangleGeometry(bar, &pRectangleGeometry);
    if (FAILED(hr))
        return hr;

    D2D1_RECT_F rect = {};
    hr = pRectangleGeometry->GetBounds(translation(baselineOriginX, baselineOriginY), &rect);
    if (SUCCEEDED(hr))
        include(m_bounds, rect);
    return hr;
}

HRESULT CTextToGlyphRunRenderer::DrawInlineObject(void*, FLOAT, FLOAT, IDWriteInlineObject*, BOOL, BOOL, IUnknown*) {
    return E_NOTIMPL;
}

} // namespace fonts
