#pragma once

#include <cstddef>
#include <vector>

#include <d2d1.h>

#include "geometry/CurveBounds.h"

namespace platform {

class CFontFace;

/// A glyph that stands for its outline: origin in the path's units, y axis down; `scale` is em / unitsPerEm.
struct GlyphRecord {
    CFontFace* face;
    float scale;
    float x;
    float y;
    UINT16 glyph;
};

/// What a path consists of: figures as they were added, and glyphs. Written by one thread, read by any number.
class PathData {
public:
    void beginFigure(D2D1_POINT_2F start, D2D1_FIGURE_BEGIN begin);
    void addLine(D2D1_POINT_2F to);
    void addCubic(const D2D1_BEZIER_SEGMENT& segment);
    void addQuadratic(const D2D1_QUADRATIC_BEZIER_SEGMENT& segment);
    void addArc(const D2D1_ARC_SEGMENT& segment);
    void setSegmentFlags(D2D1_PATH_SEGMENT flags);
    void endFigure(D2D1_FIGURE_END end);

    void reserveGlyphs(std::size_t count) { m_glyphs.reserve(m_glyphs.size() + count); }
    /// `outline` holds the exact bounds of the glyph where it stands; it must not be empty.
    void addGlyph(const GlyphRecord& glyph, const Bounds& outline);

    bool empty() const { return m_figureCount == 0 && m_glyphs.empty(); }
    bool hasGlyphs() const { return !m_glyphs.empty(); }
    UINT32 figureCount() const { return m_figureCount; }
    /// The closing line of a closed figure counts.
    UINT32 segmentCount() const { return m_segmentCount; }

    /// Exact bounds of all filled figures and glyphs under the map; inverted without any.
    Bounds bounds(const D2D1_MATRIX_3X2_F& transform) const;
    /// Plays the figures, but not the glyphs, into a sink.
    void stream(ID2D1GeometrySink& sink) const;
    /// The same path with every glyph replaced by its curves.
    PathData expanded() const;

private:
    enum class Command : unsigned char {
        BeginFilled,
        BeginHollow,
        Line,
        Cubic,
        Quadratic,
        Arc,
        Flags,
        EndOpen,
        EndClosed
    };

    Bounds figureBounds(const D2D1_MATRIX_3X2_F& transform) const;

    std::vector<Command> m_commands;
    // The points of all commands but arcs, in order.
    std::vector<D2D1_POINT_2F> m_points;
    std::vector<D2D1_ARC_SEGMENT> m_arcs;
    std::vector<D2D1_PATH_SEGMENT> m_flags;
    UINT32 m_figureCount = 0;
    UINT32 m_segmentCount = 0;

    std::vector<GlyphRecord> m_glyphs;
    // The glyphs' bounds as they stand: enough for every map that only moves.
    Bounds m_glyphBounds;
};

} // namespace platform
