#include "geometry/PathGeometry.h"

#include <cmath>
#include <initializer_list>
#include <utility>

#include "fonts/FontFace.h"

namespace platform {

namespace {

constexpr D2D1_MATRIX_3X2_F identity = {1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F};

bool finite(std::initializer_list<D2D1_POINT_2F> points) {
    for (const D2D1_POINT_2F& point : points) {
        if (!std::isfinite(point.x) || !std::isfinite(point.y)) {
            return false;
        }
    }
    return true;
}

bool finite(const D2D1_RECT_F& rect) {
    return finite({{rect.left, rect.top}, {rect.right, rect.bottom}});
}

bool finite(const D2D1_MATRIX_3X2_F& matrix) {
    return finite({{matrix.m11, matrix.m12}, {matrix.m21, matrix.m22}, {matrix.dx, matrix.dy}});
}

D2D1_RECT_F rectangle(const Bounds& bounds) {
    return {static_cast<float>(bounds.left), static_cast<float>(bounds.top), static_cast<float>(bounds.right),
            static_cast<float>(bounds.bottom)};
}

} // namespace

CPathGeometry::CPathGeometry(ID2D1Factory& factory) : m_factory(factory) {
    m_factory.AddRef();
}

CPathGeometry::~CPathGeometry() {
    m_factory.Release();
}

void CPathGeometry::GetFactory(ID2D1Factory** factory) const {
    handOut(m_factory, factory);
}

HRESULT CPathGeometry::Open(ID2D1GeometrySink** geometrySink) {
    State expected = State::New;
    if (!m_state.compare_exchange_strong(expected, State::Open)) {
        *geometrySink = nullptr;
        return D2DERR_WRONG_STATE;
    }
    handOut(static_cast<ID2D1GeometrySink&>(m_sink), geometrySink);
    return S_OK;
}

HRESULT CPathGeometry::readable() const {
    return m_state.load(std::memory_order_acquire) == State::Closed ? m_error : D2DERR_WRONG_STATE;
}

HRESULT CPathGeometry::GetBounds(const D2D1_MATRIX_3X2_F* worldTransform, D2D1_RECT_F* bounds) const {
    if (const HRESULT state = readable(); FAILED(state)) {
        return state;
    }
    return guarded([&] {
        const D2D1_MATRIX_3X2_F& transform = worldTransform != nullptr ? *worldTransform : identity;
        const Bounds result = m_path.bounds(transform);
        *bounds = rectangle(result);
        if (!finite(transform) || (!result.empty() && !finite(*bounds))) {
            return D2DERR_BAD_NUMBER;
        }
        return S_OK;
    });
}

HRESULT CPathGeometry::Stream(ID2D1GeometrySink* geometrySink) const {
    if (const HRESULT state = readable(); FAILED(state)) {
        return state;
    }
    return guarded([&] {
        geometrySink->SetFillMode(m_fillMode);
        if (m_path.hasGlyphs()) {
            m_path.expanded().stream(*geometrySink);
        } else {
            m_path.stream(*geometrySink);
        }
        return S_OK;
    });
}

HRESULT CPathGeometry::GetSegmentCount(UINT32* count) const {
    if (const HRESULT state = readable(); FAILED(state)) {
        return state;
    }
    return guarded([&] {
        *count = m_path.hasGlyphs() ? m_path.expanded().segmentCount() : m_path.segmentCount();
        return S_OK;
    });
}

HRESULT CPathGeometry::GetFigureCount(UINT32* count) const {
    if (const HRESULT state = readable(); FAILED(state)) {
        return state;
    }
    return guarded([&] {
        *count = m_path.hasGlyphs() ? m_path.expanded().figureCount() : m_path.figureCount();
        return S_OK;
    });
}

HRESULT CPathGeometry::Sink::QueryInterface(REFIID riid, void** object) {
    if (riid == __uuidof(ID2D1GeometrySink) || riid == __uuidof(ID2D1SimplifiedGeometrySink) ||
        riid == __uuidof(IUnknown)) {
        *object = static_cast<ID2D1GeometrySink*>(this);
    } else if (riid == __uuidof(IGlyphOutlineSink)) {
        *object = static_cast<IGlyphOutlineSink*>(this);
    } else {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

/// Every change of the path goes through here: nothing happens once something went wrong or in another state than
/// `expected`, and no exception reaches the caller. `addition` returns a status to remember.
template <typename Addition>
void CPathGeometry::Sink::add(State expected, Addition&& addition) noexcept {
    HRESULT& error = m_geometry.m_error;
    const State state = m_geometry.m_state.load(std::memory_order_relaxed);
    if (FAILED(error) || state == State::Closed) {
        return;
    }
    error = state == expected ? guarded(std::forward<Addition>(addition)) : D2DERR_WRONG_STATE;
}

void CPathGeometry::Sink::SetFillMode(D2D1_FILL_MODE fillMode) {
    add(State::Open, [&] {
        // The mode holds for the whole path, so it may not change once there is something in it.
        if (fillMode != m_geometry.m_fillMode && !m_geometry.m_path.empty()) {
            return D2DERR_WRONG_STATE;
        }
        m_geometry.m_fillMode = fillMode;
        return S_OK;
    });
}

void CPathGeometry::Sink::SetSegmentFlags(D2D1_PATH_SEGMENT vertexFlags) {
    add(m_geometry.m_state.load(std::memory_order_relaxed), [&] {
        m_geometry.m_path.setSegmentFlags(vertexFlags);
        return S_OK;
    });
}

void CPathGeometry::Sink::BeginFigure(D2D1_POINT_2F startPoint, D2D1_FIGURE_BEGIN figureBegin) {
    add(State::Open, [&] {
        m_geometry.m_path.beginFigure(startPoint, figureBegin);
        m_geometry.m_state.store(State::InFigure, std::memory_order_relaxed);
        return finite({startPoint}) ? S_OK : D2DERR_BAD_NUMBER;
    });
}

void CPathGeometry::Sink::AddLines(const D2D1_POINT_2F* points, UINT pointsCount) {
    for (UINT i = 0; i < pointsCount; ++i) {
        AddLine(points[i]);
    }
}

void CPathGeometry::Sink::AddLine(D2D1_POINT_2F point) {
    add(State::InFigure, [&] {
        m_geometry.m_path.addLine(point);
        return finite({point}) ? S_OK : D2DERR_BAD_NUMBER;
    });
}

void CPathGeometry::Sink::AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT beziersCount) {
    for (UINT i = 0; i < beziersCount; ++i) {
        AddBezier(&beziers[i]);
    }
}

void CPathGeometry::Sink::AddBezier(const D2D1_BEZIER_SEGMENT* bezier) {
    add(State::InFigure, [&] {
        m_geometry.m_path.addCubic(*bezier);
        return finite({bezier->point1, bezier->point2, bezier->point3}) ? S_OK : D2DERR_BAD_NUMBER;
    });
}

void CPathGeometry::Sink::AddQuadraticBeziers(const D2D1_QUADRATIC_BEZIER_SEGMENT* beziers, UINT beziersCount) {
    for (UINT i = 0; i < beziersCount; ++i) {
        AddQuadraticBezier(&beziers[i]);
    }
}

void CPathGeometry::Sink::AddQuadraticBezier(const D2D1_QUADRATIC_BEZIER_SEGMENT* bezier) {
    add(State::InFigure, [&] {
        m_geometry.m_path.addQuadratic(*bezier);
        return finite({bezier->point1, bezier->point2}) ? S_OK : D2DERR_BAD_NUMBER;
    });
}

void CPathGeometry::Sink::AddArc(const D2D1_ARC_SEGMENT* arc) {
    add(State::InFigure, [&] {
        m_geometry.m_path.addArc(*arc);
        return finite({arc->point, {arc->size.width, arc->size.height}, {arc->rotationAngle, 0.0F}})
                   ? S_OK
                   : D2DERR_BAD_NUMBER;
    });
}

void CPathGeometry::Sink::EndFigure(D2D1_FIGURE_END figureEnd) {
    add(State::InFigure, [&] {
        m_geometry.m_path.endFigure(figureEnd);
        m_geometry.m_state.store(State::Open, std::memory_order_relaxed);
        return S_OK;
    });
}

void CPathGeometry::Sink::reserveGlyphs(std::size_t count) noexcept {
    add(State::Open, [&] {
        m_geometry.m_path.reserveGlyphs(count);
        return S_OK;
    });
}

void CPathGeometry::Sink::addGlyph(CFontFace& face, UINT16 glyph, float scale, float x, float y) noexcept {
    add(State::Open, [&] {
        const GlyphBounds& design = face.glyphBounds(glyph);
        if (design.empty()) {
            return S_OK;
        }
        const D2D1_RECT_F ends = {x + design.xMin * scale, y - design.yMax * scale, x + design.xMax * scale,
                                  y - design.yMin * scale};
        Bounds outline;
        // A negative scale swaps the corners, so both are included as points.
        outline.include(Point{static_cast<double>(ends.left), static_cast<double>(ends.top)});
        outline.include(Point{static_cast<double>(ends.right), static_cast<double>(ends.bottom)});
        m_geometry.m_path.addGlyph({&face, scale, x, y, glyph}, outline);
        return finite(ends) ? S_OK : D2DERR_BAD_NUMBER;
    });
}

HRESULT CPathGeometry::Sink::Close() {
    const State state = m_geometry.m_state.load(std::memory_order_relaxed);
    if (state == State::Closed) {
        return D2DERR_WRONG_STATE;
    }
    if (SUCCEEDED(m_geometry.m_error) && state == State::InFigure) {
        m_geometry.m_error = D2DERR_WRONG_STATE;
    }
    m_geometry.m_state.store(State::Closed, std::memory_order_release);
    return m_geometry.m_error;
}

} // namespace platform
