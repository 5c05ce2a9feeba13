#include "fonts/FontFace.h"

#include "fonts/GlyphOutlineSink.h"

#include <d2d1.h>

namespace platform {

namespace {

/// Places design units in the sink's units, y down.
struct Placement {
    float xx;
    float xy;
    float yx;
    float yy;
    float x;
    float y;

    D2D1_POINT_2F map(OutlinePoint point) const {
        return {xx * point.x + xy * point.y + x, yx * point.x + yy * point.y + y};
    }
};

/// Plays placed contours into a sink that knows lines and cubic curves only.
class ContourPlayer final : public OutlineSink {
public:
    explicit ContourPlayer(ID2D1SimplifiedGeometrySink& sink) : m_sink(sink) {}

    void place(const Placement& placement) { m_placement = placement; }

    void moveTo(OutlinePoint to) override {
        m_current = m_placement.map(to);
        m_sink.BeginFigure(m_current, D2D1_FIGURE_BEGIN_FILLED);
    }
    void lineTo(OutlinePoint to) override {
        m_current = m_placement.map(to);
        m_sink.AddLines(&m_current, 1);
    }
    void quadTo(OutlinePoint control, OutlinePoint to) override {
        // The same curve, raised to the third degree.
        const D2D1_POINT_2F c = m_placement.map(control);
        const D2D1_POINT_2F end = m_placement.map(to);
        constexpr float third = 2.0F / 3.0F;
        addCubic({m_current.x + third * (c.x - m_current.x), m_current.y + third * (c.y - m_current.y)},
                 {end.x + third * (c.x - end.x), end.y + third * (c.y - end.y)}, end);
    }
    void cubicTo(OutlinePoint control1, OutlinePoint control2, OutlinePoint to) override {
        addCubic(m_placement.map(control1), m_placement.map(control2), m_placement.map(to));
    }
    void close() override { m_sink.EndFigure(D2D1_FIGURE_END_CLOSED); }

private:
    void addCubic(D2D1_POINT_2F control1, D2D1_POINT_2F control2, D2D1_POINT_2F end) {
        const D2D1_BEZIER_SEGMENT segment{control1, control2, end};
        m_sink.AddBeziers(&segment, 1);
        m_current = end;
    }

    ID2D1SimplifiedGeometrySink& m_sink;
    Placement m_placement{};
    D2D1_POINT_2F m_current{0, 0};
};

/// A run's arrays as GetGlyphRunOutline gets them.
struct Run {
    float scale;
    const UINT16* glyphs;
    const FLOAT* advances;
    const DWRITE_GLYPH_OFFSET* offsets;
    UINT32 count;
    bool isSideways;
    bool isRightToLeft;
};

float naturalAdvance(const CFontFace& face, UINT16 glyph, bool isSideways) {
    if (!isSideways) {
        return static_cast<float>(face.advance(glyph));
    }
    // Vertical advances go down and so are negative there.
    return glyph < face.glyphCount() ? static_cast<float>(-hb_font_get_glyph_v_advance(face.shapingFont(), glyph)) : 0;
}

/// Calls `visit(glyph, x, y)` for each glyph with its origin, y down. A right-to-left
/// run lies left of the origin, its offsets point left.
template <typename Visit>
void visitOrigins(const CFontFace& face, const Run& run, Visit&& visit) {
    const float direction = run.isRightToLeft ? -1.0F : 1.0F;
    float pen = 0;
    for (UINT32 i = 0; i < run.count; ++i) {
        const float advance =
            run.advances != nullptr ? run.advances[i] : naturalAdvance(face, run.glyphs[i], run.isSideways) * run.scale;
        const DWRITE_GLYPH_OFFSET offset = run.offsets != nullptr ? run.offsets[i] : DWRITE_GLYPH_OFFSET{0, 0};
        const float origin = run.isRightToLeft ? pen - advance : pen;
        visit(run.glyphs[i], origin + direction * offset.advanceOffset, -offset.ascenderOffset);
        pen += direction * advance;
    }
}

Placement uprightPlacement(float scale, float x, float y) {
    return {scale, 0, 0, -scale, x, y};
}

/// A quarter turn to the left about the glyph's vertical origin, which lies on the pen.
Placement sidewaysPlacement(const CFontFace& face, UINT16 glyph, float scale, float x, float y) {
    hb_position_t originX = 0;
    hb_position_t originY = 0;
    hb_font_get_glyph_v_origin(face.shapingFont(), glyph, &originX, &originY);
    return {0, -scale, -scale, 0, x + scale * static_cast<float>(originY), y + scale * static_cast<float>(originX)};
}

void playGlyphs(const CFontFace& face, const Run& run, ID2D1SimplifiedGeometrySink& sink) {
    ContourPlayer player(sink);
    visitOrigins(face, run, [&](UINT16 glyph, float x, float y) {
        player.place(run.isSideways ? sidewaysPlacement(face, glyph, run.scale, x, y)
                                    : uprightPlacement(run.scale, x, y));
        face.outline(glyph, player);
    });
}

/// Our own geometry takes upright glyphs whole, because it can bound them without curves. It may outlive a face that
/// does not stay as long as the process.
bool handOverGlyphs(CFontFace& face, const Run& run, ID2D1SimplifiedGeometrySink& sink) {
    void* found = nullptr;
    if (face.life() != nullptr || run.isSideways || !(run.scale > 0) ||
        FAILED(sink.QueryInterface(__uuidof(IGlyphOutlineSink), &found))) {
        return false;
    }
    auto* const lane = static_cast<IGlyphOutlineSink*>(found);
    lane->reserveGlyphs(run.count);
    visitOrigins(face, run, [&](UINT16 glyph, float x, float y) { lane->addGlyph(face, glyph, run.scale, x, y); });
    lane->Release();
    return true;
}

} // namespace

HRESULT CFontFace::GetGlyphRunOutline(FLOAT emSize, const UINT16* glyphIndices, const FLOAT* glyphAdvances,
                                      const DWRITE_GLYPH_OFFSET* glyphOffsets, UINT32 glyphCount, BOOL isSideways,
                                      BOOL isRightToLeft, IDWriteGeometrySink* geometrySink) {
    if (glyphIndices == nullptr || geometrySink == nullptr || (isSideways != FALSE && isRightToLeft != FALSE)) {
        return E_INVALIDARG;
    }
    if (glyphCount == 0) {
        return S_OK;
    }
    return guarded([&] {
        const Run run{emSize / static_cast<float>(unitsPerEm()),
                      glyphIndices,
                      glyphAdvances,
                      glyphOffsets,
                      glyphCount,
                      isSideways != FALSE,
                      isRightToLeft != FALSE};
        geometrySink->SetFillMode(D2D1_FILL_MODE_WINDING);
        if (!handOverGlyphs(*this, run, *geometrySink)) {
            playGlyphs(*this, run, *geometrySink);
        }
        return S_OK;
    });
}

} // namespace platform
