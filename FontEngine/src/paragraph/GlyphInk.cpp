#include "GlyphInk.h"

#include <d2d1.h>

namespace fonts {

namespace {

// Notes whether an outline has any figure. Lives on the stack of the one call that fills it.
class CInkSink final : public ID2D1SimplifiedGeometrySink {
public:
    bool hasInk() const { return m_hasInk; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool isKnown = riid == __uuidof(IUnknown) || riid == __uuidof(ID2D1SimplifiedGeometrySink);
        *object = isKnown ? this : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE) override {}
    void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT) override {}
    void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F, D2D1_FIGURE_BEGIN) override { m_hasInk = true; }
    void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F*, UINT32) override {}
    void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT*, UINT32) override {}
    void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END) override {}
    HRESULT STDMETHODCALLTYPE Close() override { return S_OK; }

private:
    bool m_hasInk = false;
};

} // namespace

HRESULT CGlyphInk::find(const DWRITE_GLYPH_RUN& run, std::uint32_t face, UINT16 glyph, bool& hasInk) {
    const std::uint64_t key = static_cast<std::uint64_t>(face) << 16 | glyph;
    if (const auto known = m_known.find(key); known != m_known.end()) {
        hasInk = known->second;
        return S_OK;
    }
    CInkSink sink;
    const HRESULT hr =
        run.fontFace->GetGlyphRunOutline(run.fontEmSize, &glyph, nullptr, nullptr, 1, run.isSideways, FALSE, &sink);
    if (SUCCEEDED(hr)) {
        hasInk = sink.hasInk();
        m_known.emplace(key, hasInk);
    }
    return hr;
}

} // namespace fonts
