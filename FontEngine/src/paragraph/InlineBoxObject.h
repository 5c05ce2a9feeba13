#pragma once

#include <dwrite.h>

#include <atomic>

#include <FontEngine/ParagraphLayoutOptions.h>

namespace fonts {

// A box of the caller's as the platform wants it: a size, a baseline, and what lines may do beside it. It is drawn by
// nobody; where it stands is told to the renderer.
class CInlineBoxObject final : public IDWriteInlineObject {
public:
    // The box's width is divided by `widthFactor`, by which the whole paragraph is stretched afterwards.
    CInlineBoxObject(const SInlineBox& box, double widthFactor);
    CInlineBoxObject(const CInlineBoxObject&) = delete;
    CInlineBoxObject& operator=(const CInlineBoxObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE Draw(void* context, IDWriteTextRenderer* renderer, FLOAT originX, FLOAT originY,
                                   BOOL isSideways, BOOL isRightToLeft, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE GetMetrics(DWRITE_INLINE_OBJECT_METRICS* metrics) override;
    HRESULT STDMETHODCALLTYPE GetOverhangMetrics(DWRITE_OVERHANG_METRICS* overhangs) override;
    HRESULT STDMETHODCALLTYPE GetBreakConditions(DWRITE_BREAK_CONDITION* before,
                                                 DWRITE_BREAK_CONDITION* after) override;

private:
    ~CInlineBoxObject() = default;

    std::atomic<ULONG> m_references{0};
    DWRITE_INLINE_OBJECT_METRICS m_metrics{};
    DWRITE_BREAK_CONDITION m_before;
    DWRITE_BREAK_CONDITION m_after;
};

} // namespace fonts
