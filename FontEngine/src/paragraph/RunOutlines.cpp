// What is drawn, taken from the fonts glyph by glyph.

#include <d2d1.h>

#include <exception>
#include <utility>

#include <oslayer/checkHResult.h>

#include "LayoutData.h"

namespace fonts {

namespace {

// Hands a glyph's outline on to a host's sink, stretched, slanted and where it stands. What the host throws must not
// pass through the platform: it waits until the platform is done. Lives on the stack of the call that fills it.
class CGlyphOutlineSink final : public ID2D1SimplifiedGeometrySink {
public:
    CGlyphOutlineSink(const SRun& run, const SGlyph& glyph, IOutlineSink& target)
        : m_run(run), m_origin(glyph.origin), m_target(target) {}

    void rethrow() const {
        if (m_failure) {
            std::rethrow_exception(m_failure);
        }
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool isKnown = riid == __uuidof(IUnknown) || riid == __uuidof(ID2D1SimplifiedGeometrySink);
        *object = isKnown ? this : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE) override {}
    void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT) override {}
    void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F start, D2D1_FIGURE_BEGIN) override {
        tell([&] { m_target.moveTo(placed(start)); });
    }
    void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F* points, UINT32 count) override {
        for (UINT32 i = 0; i < count; ++i) {
            tell([&] { m_target.lineTo(placed(points[i])); });
        }
    }
    void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT32 count) override {
        for (UINT32 i = 0; i < count; ++i) {
            const D2D1_BEZIER_SEGMENT& bezier = beziers[i];
            tell([&] { m_target.cubicTo(placed(bezier.point1), placed(bezier.point2), placed(bezier.point3)); });
        }
    }
    void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END) override {
        tell([&] { m_target.close(); });
    }
    HRESULT STDMETHODCALLTYPE Close() override { return S_OK; }

private:
    template <class Message>
    void tell(const Message& message) {
        if (m_failure) {
            return;
        }
        try {
            message();
        } catch (...) {
            m_failure = std::current_exception();
        }
    }

    // From the platform's frame, y down from the glyph's origin.
    MbCartPoint placed(const D2D1_POINT_2F& point) const {
        const auto x = static_cast<double>(point.x);
        const auto y = -static_cast<double>(point.y);
        return {m_origin.x + m_run.widthFactor * x + m_run.slant * y, m_origin.y + y};
    }

    const SRun& m_run;
    MbCartPoint m_origin;
    IOutlineSink& m_target;
    std::exception_ptr m_failure;
};

void outlineBar(const MbRect& bar, IOutlineSink& sink) {
    sink.moveTo({bar.xmin, bar.ymin});
    sink.lineTo({bar.xmax, bar.ymin});
    sink.lineTo({bar.xmax, bar.ymax});
    sink.lineTo({bar.xmin, bar.ymax});
    sink.close();
}

} // namespace

void CParagraphLayout::outline(const SRun& run, const SGlyph& glyph, IOutlineSink& sink) const {
    if (!glyph.hasInk) {
        return;
    }
    CGlyphOutlineSink glyphSink(run, glyph, sink);
    const HRESULT hr = m_data->faces.at(run.face)->GetGlyphRunOutline(static_cast<FLOAT>(run.emSize), &glyph.id,
                                                                      nullptr, nullptr, 1, FALSE, FALSE, &glyphSink);
    glyphSink.rethrow();
    OSLAYER_CHECK(hr);
}

void CParagraphLayout::outline(const SRun& run, IOutlineSink& sink) const {
    for (const SGlyph& glyph : glyphs(run)) {
        outline(run, glyph, sink);
    }
}

void CParagraphLayout::outline(IOutlineSink& sink) const {
    for (const SRun& run : m_data->runs) {
        outline(run, sink);
    }
    for (const SBar& bar : m_data->bars) {
        outlineBar(bar.rect, sink);
    }
}

} // namespace fonts
