#include "Outlines.h"

#include <d2d1.h>
#include <dwrite_2.h>

#include <algorithm>

#include <oslayer/checkHResult.h>

namespace tool {

namespace {

// Receives glyph outlines in the platform's frame (y down, baseline at 0) and
// appends them to an outline at a baseline origin (y up).
class OutlineSink final : public ID2D1SimplifiedGeometrySink {
public:
    OutlineSink(Outline& outline, MbCartPoint origin) : m_outline(outline), m_origin(origin) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool known = riid == __uuidof(IUnknown) || riid == __uuidof(ID2D1SimplifiedGeometrySink);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    // Lives on the stack of the one call that fills it.
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE) override {}
    void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT) override {}
    void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F start, D2D1_FIGURE_BEGIN) override {
        m_outline.verbs.push_back(Outline::Verb::Move);
        add(start);
    }
    void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F* points, UINT32 count) override {
        for (UINT32 i = 0; i < count; ++i) {
            m_outline.verbs.push_back(Outline::Verb::Line);
            add(points[i]);
        }
    }
    void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT32 count) override {
        for (UINT32 i = 0; i < count; ++i) {
            m_outline.verbs.push_back(Outline::Verb::Curve);
            add(beziers[i].point1);
            add(beziers[i].point2);
            add(beziers[i].point3);
        }
    }
    void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END) override { m_outline.verbs.push_back(Outline::Verb::Close); }
    HRESULT STDMETHODCALLTYPE Close() override { return S_OK; }

private:
    void add(D2D1_POINT_2F point) {
        m_outline.points.push_back(
            {m_origin.x + static_cast<double>(point.x), m_origin.y - static_cast<double>(point.y)});
    }

    Outline& m_outline;
    MbCartPoint m_origin;
};

Outline barOutline(double x, double top, double width, double thickness) {
    Outline bar;
    bar.verbs = {Outline::Verb::Move, Outline::Verb::Line, Outline::Verb::Line, Outline::Verb::Line,
                 Outline::Verb::Close};
    bar.points = {{x, top}, {x + width, top}, {x + width, top - thickness}, {x, top - thickness}};
    return bar;
}

class OutlineRenderer final : public IDWriteTextRenderer {
public:
    explicit OutlineRenderer(const std::vector<fonts::SLayoutRun>& runs) : m_runs(runs) {}

    PaintedParagraph takeResult() { return std::move(m_result); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool known = riid == __uuidof(IUnknown) || riid == __uuidof(IDWritePixelSnapping) ||
                           riid == __uuidof(IDWriteTextRenderer);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    // Lives on the stack of the one call that draws into it.
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    // The same grid as the library's own renderer, so that pictures and
    // measured boxes show the same baselines.
    HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void*, BOOL* isDisabled) override {
        *isDisabled = FALSE;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetCurrentTransform(void*, DWRITE_MATRIX* transform) override {
        *transform = {100.0F, 0.0F, 0.0F, -100.0F, 0.0F, 0.0F};
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void*, FLOAT* pixelsPerDip) override {
        *pixelsPerDip = 1.0F;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE DrawGlyphRun(void*, FLOAT x, FLOAT y, DWRITE_MEASURING_MODE, const DWRITE_GLYPH_RUN* run,
                                           const DWRITE_GLYPH_RUN_DESCRIPTION* description, IUnknown*) override {
        const double baseline = -static_cast<double>(y);
        if (m_result.baselines.empty() || m_result.baselines.back() > baseline) {
            m_result.baselines.push_back(baseline);
        }
        m_result.missingGlyphs +=
            static_cast<std::size_t>(std::count(run->glyphIndices, run->glyphIndices + run->glyphCount, UINT16{0}));
        PaintedShape shape;
        shape.color = colorAt(description->textPosition);
        OutlineSink sink(shape.outline, {static_cast<double>(x), baseline});
        const HRESULT result = run->glyphCount == 0
                                   ? S_OK
                                   : run->fontFace->GetGlyphRunOutline(
                                         run->fontEmSize, run->glyphIndices, run->glyphAdvances, run->glyphOffsets,
                                         run->glyphCount, run->isSideways, (run->bidiLevel & 1U) != 0, &sink);
        if (!shape.outline.verbs.empty()) {
            m_result.shapes.push_back(std::move(shape));
        }
        return result;
    }

    HRESULT STDMETHODCALLTYPE DrawUnderline(void*, FLOAT x, FLOAT y, const DWRITE_UNDERLINE* underline,
                                            IUnknown*) override {
        addBar(x, y, underline->offset, underline->width, underline->thickness);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawStrikethrough(void*, FLOAT x, FLOAT y, const DWRITE_STRIKETHROUGH* strikethrough,
                                                IUnknown*) override {
        addBar(x, y, strikethrough->offset, strikethrough->width, strikethrough->thickness);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DrawInlineObject(void*, FLOAT, FLOAT, IDWriteInlineObject*, BOOL, BOOL,
                                               IUnknown*) override {
        return S_OK; // documents hold none
    }

private:
    std::uint32_t colorAt(UINT32 position) const {
        const auto run = std::find_if(m_runs.begin(), m_runs.end(), [position](const fonts::SLayoutRun& candidate) {
            return position >= candidate.range.startPosition &&
                   position - candidate.range.startPosition < candidate.range.length;
        });
        return run == m_runs.end() ? 0xFF000000U : run->token.color;
    }

    void addBar(FLOAT x, FLOAT y, FLOAT offset, FLOAT width, FLOAT thickness) {
        PaintedShape shape;
        shape.outline = barOutline(static_cast<double>(x), -static_cast<double>(y + offset), static_cast<double>(width),
                                   static_cast<double>(thickness));
        if (!m_runs.empty()) {
            shape.color = m_runs.front().token.color;
        }
        m_result.shapes.push_back(std::move(shape));
    }

    const std::vector<fonts::SLayoutRun>& m_runs;
    PaintedParagraph m_result;
};

} // namespace

PaintedParagraph paintParagraph(const fonts::SLayoutDesc& layout) {
    OutlineRenderer renderer(layout.runs);
    OSLAYER_CHECK(layout.pObject->Draw(nullptr, &renderer, 0.0F, 0.0F));
    return renderer.takeResult();
}

} // namespace tool
