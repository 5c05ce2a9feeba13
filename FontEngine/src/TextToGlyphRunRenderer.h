#pragma once

#include <atomic>
#include <cstdint>
#include <utility>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <d2d1.h>
#include <dwrite.h>

#include <FontEngine/GlyphRunDesc.h>
#include <geometry/MbRect.h>
#include <geometry/MbRegion.h>
#include <oslayer/com_ptr.h>

namespace fonts {

// Bounds of one run's outlines, y up, and how far the platform got with them.
struct SGlyphOutlineBounds {
    HRESULT hr = S_OK;
    MbRect bounds;
};

// Tight bounds of the run's glyph outlines with its baseline starting at
// (baselineOriginX, baselineOriginY), y down as the platform has it. Empty when
// the glyphs have no outline or a platform call fails (`hr` is then its result).
SGlyphOutlineBounds getGlyphRunOutlineBounds(const DWRITE_GLYPH_RUN& glyphRun, FLOAT baselineOriginX,
                                             FLOAT baselineOriginY, const oslayer::com_ptr<ID2D1Factory>& d2dFactory);

// The same for outlines that `placement` takes from the run's own frame, y down, to where they stand.
SGlyphOutlineBounds getGlyphRunOutlineBounds(const DWRITE_GLYPH_RUN& glyphRun, const D2D1_MATRIX_3X2_F& placement,
                                             const oslayer::com_ptr<ID2D1Factory>& d2dFactory);

// The sink a text layout is drawn into. It draws nothing, it measures: the ink
// box of everything drawn, the glyph runs in drawing order, and a region for each
// underline bar. A strikethrough widens the ink box and gives no region, on
// purpose.
//
// The platform speaks y down; everything kept here is y up. Failures of platform
// calls leave through the callback's result, so that the drawing ends with it.
//
// The count starts at 0 and the release that brings it back there frees the
// object, so an object of automatic storage needs CLocalTextToGlyphRunRenderer.
// One renderer serves one drawing on one thread.
class CTextToGlyphRunRenderer : public IDWriteTextRenderer {
public:
    explicit CTextToGlyphRunRenderer(oslayer::com_ptr<ID2D1Factory> d2dFactory);
    CTextToGlyphRunRenderer(const CTextToGlyphRunRenderer&) = delete;
    CTextToGlyphRunRenderer& operator=(const CTextToGlyphRunRenderer&) = delete;

    // Any interface but the three answered here gets E_FAIL, not E_NOINTERFACE.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void* context, BOOL* isDisabled) override;
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void* context, DWRITE_MATRIX* transform) override;
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void* context, FLOAT* pixelsPerDip) override;

    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void* context, FLOAT baselineOriginX, FLOAT baselineOriginY,
                                           DWRITE_MEASURING_MODE measuringMode, const DWRITE_GLYPH_RUN* glyphRun,
                                           const DWRITE_GLYPH_RUN_DESCRIPTION* glyphRunDescription,
                                           IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawUnderline(void* context, FLOAT baselineOriginX, FLOAT baselineOriginY,
                                            const DWRITE_UNDERLINE* underline, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void* context, FLOAT baselineOriginX, FLOAT baselineOriginY,
                                                const DWRITE_STRIKETHROUGH* strikethrough, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void* context, FLOAT originX, FLOAT originY,
                                               IDWriteInlineObject* inlineObject, BOOL isSideways, BOOL isRightToLeft,
                                               IUnknown* effect) override;

    const MbRect& bounds() const { return m_bounds; }
    const std::vector<SGlyphRunDesc>& glyphRuns() const& { return m_glyphRuns; }
    std::vector<SGlyphRunDesc> glyphRuns() && { return std::move(m_glyphRuns); }
    const std::vector<boost::intrusive_ptr<MbRegion>>& decorationRegions() const { return m_decorationRegions; }

    virtual ~CTextToGlyphRunRenderer() = default;

protected:
    // Takes one reference off and returns the new count; frees nothing.
    ULONG releaseReference() { return --m_refCount; }

private:
    std::atomic<ULONG> m_refCount{0};
    oslayer::com_ptr<ID2D1Factory> m_d2dFactory;
    std::vector<SGlyphRunDesc> m_glyphRuns;
    MbRect m_bounds;
    std::vector<boost::intrusive_ptr<MbRegion>> m_decorationRegions;
};

// A renderer on the stack of whoever draws: it counts like any other, but a
// platform that pairs each AddRef of its own with a Release must not free it.
class CLocalTextToGlyphRunRenderer final : public CTextToGlyphRunRenderer {
public:
    using CTextToGlyphRunRenderer::CTextToGlyphRunRenderer;

    ULONG STDMETHODCALLTYPE Release() override { return releaseReference(); }
};

} // namespace fonts
