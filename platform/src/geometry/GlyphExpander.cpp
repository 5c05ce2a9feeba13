#include "geometry/GlyphExpander.h"

#include <new>

#include "fonts/FontFace.h"

namespace platform {

namespace {

/// Moves what a face draws to where the glyph stands. Lives on the stack of one call; its counts mean nothing.
class MovingSink final : public ID2D1SimplifiedGeometrySink {
public:
    MovingSink(PathData& path, float x, float y) : m_path(path), m_x(x), m_y(y) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID /*riid*/, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE /*fillMode*/) override {}
    void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT /*vertexFlags*/) override {}
    void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F startPoint, D2D1_FIGURE_BEGIN figureBegin) override {
        m_path.beginFigure(moved(startPoint), figureBegin);
    }
    void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F* points, UINT pointsCount) override {
        for (UINT i = 0; i < pointsCount; ++i) {
            m_path.addLine(moved(points[i]));
        }
    }
    void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT beziersCount) override {
        for (UINT i = 0; i < beziersCount; ++i) {
            m_path.addCubic({moved(beziers[i].point1), moved(beziers[i].point2), moved(beziers[i].point3)});
        }
    }
    void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END figureEnd) override { m_path.endFigure(figureEnd); }
    HRESULT STDMETHODCALLTYPE Close() override { return S_OK; }

private:
    D2D1_POINT_2F moved(D2D1_POINT_2F point) const { return {point.x + m_x, point.y + m_y}; }

    PathData& m_path;
    float m_x;
    float m_y;
};

} // namespace

void appendOutline(const GlyphRecord& glyph, PathData& path) {
    MovingSink sink(path, glyph.x, glyph.y);
    const float emSize = glyph.scale * static_cast<float>(glyph.face->unitsPerEm());
    const float advance = 0.0F;
    const HRESULT result =
        glyph.face->GetGlyphRunOutline(emSize, &glyph.glyph, &advance, nullptr, 1, FALSE, FALSE, &sink);
    if (FAILED(result)) {
        throw std::bad_alloc();
    }
}

} // namespace platform
