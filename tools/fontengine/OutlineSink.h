#pragma once

#include <d2d1.h>

#include "Outlines.h"

namespace tool {

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

// Notes whether an outline has any figure.
class InkSink final : public ID2D1SimplifiedGeometrySink {
public:
    [[nodiscard]] bool hasInk() const { return m_hasInk; }

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
    void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F, D2D1_FIGURE_BEGIN) override { m_hasInk = true; }
    void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F*, UINT32) override {}
    void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT*, UINT32) override {}
    void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END) override {}
    HRESULT STDMETHODCALLTYPE Close() override { return S_OK; }

private:
    bool m_hasInk = false;
};

} // namespace tool
