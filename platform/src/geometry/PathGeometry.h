#pragma once

#include <atomic>

#include <d2d1.h>

#include "com/ComObject.h"
#include "fonts/GlyphOutlineSink.h"
#include "geometry/PathData.h"

namespace platform {

/// A path: opened once, filled through its sink, closed, and from then on immutable and free for all threads.
///
/// The sink is a part of this object with an identity of its own; both share one reference count, so a sink that is
/// kept keeps its path.
class CPathGeometry final : public CHeapObject<ID2D1PathGeometry, ID2D1Geometry, ID2D1Resource> {
public:
    /// Takes a reference of `factory`. Born with one reference.
    explicit CPathGeometry(ID2D1Factory& factory);

    void STDMETHODCALLTYPE GetFactory(ID2D1Factory** factory) const override;
    HRESULT STDMETHODCALLTYPE GetBounds(const D2D1_MATRIX_3X2_F* worldTransform, D2D1_RECT_F* bounds) const override;
    HRESULT STDMETHODCALLTYPE Open(ID2D1GeometrySink** geometrySink) override;
    HRESULT STDMETHODCALLTYPE Stream(ID2D1GeometrySink* geometrySink) const override;
    HRESULT STDMETHODCALLTYPE GetSegmentCount(UINT32* count) const override;
    HRESULT STDMETHODCALLTYPE GetFigureCount(UINT32* count) const override;

private:
    enum class State : unsigned char { New, Open, InFigure, Closed };

    /// Turns calls into additions to the path and remembers the first thing that went wrong for Close.
    class Sink final : public ID2D1GeometrySink, public IGlyphOutlineSink {
    public:
        explicit Sink(CPathGeometry& geometry) : m_geometry(geometry) {}

        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
        ULONG STDMETHODCALLTYPE AddRef() override { return m_geometry.AddRef(); }
        ULONG STDMETHODCALLTYPE Release() override { return m_geometry.Release(); }

        void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE fillMode) override;
        void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT vertexFlags) override;
        void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F startPoint, D2D1_FIGURE_BEGIN figureBegin) override;
        void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F* points, UINT pointsCount) override;
        void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT beziersCount) override;
        void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END figureEnd) override;
        HRESULT STDMETHODCALLTYPE Close() override;
        void STDMETHODCALLTYPE AddLine(D2D1_POINT_2F point) override;
        void STDMETHODCALLTYPE AddBezier(const D2D1_BEZIER_SEGMENT* bezier) override;
        void STDMETHODCALLTYPE AddQuadraticBezier(const D2D1_QUADRATIC_BEZIER_SEGMENT* bezier) override;
        void STDMETHODCALLTYPE AddQuadraticBeziers(const D2D1_QUADRATIC_BEZIER_SEGMENT* beziers,
                                                   UINT beziersCount) override;
        void STDMETHODCALLTYPE AddArc(const D2D1_ARC_SEGMENT* arc) override;

        void STDMETHODCALLTYPE reserveGlyphs(std::size_t count) noexcept override;
        void STDMETHODCALLTYPE addGlyph(CFontFace& face, UINT16 glyph, float scale, float x, float y) noexcept override;

    private:
        template <typename Addition>
        void add(State expected, Addition&& addition) noexcept;

        CPathGeometry& m_geometry;
    };

    ~CPathGeometry() override;

    HRESULT readable() const;

    ID2D1Factory& m_factory;
    Sink m_sink{*this};
    PathData m_path;
    HRESULT m_error = S_OK;
    D2D1_FILL_MODE m_fillMode = D2D1_FILL_MODE_ALTERNATE;
    // Atomic, so that two threads cannot both open one path.
    std::atomic<State> m_state = State::New;
};

} // namespace platform
