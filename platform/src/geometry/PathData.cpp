#include "geometry/PathData.h"

#include <optional>

#include "geometry/EllipticArc.h"
#include "geometry/GlyphExpander.h"

namespace platform {

namespace {

bool onlyMoves(const D2D1_MATRIX_3X2_F& transform) {
    return transform.m11 == 1.0F && transform.m12 == 0.0F && transform.m21 == 0.0F && transform.m22 == 1.0F;
}

/// An affine map in double precision.
class AffineMap {
public:
    explicit AffineMap(const D2D1_MATRIX_3X2_F& matrix)
        : m_x{static_cast<double>(matrix.m11), static_cast<double>(matrix.m12)}, m_y{static_cast<double>(matrix.m21),
                                                                                     static_cast<double>(matrix.m22)},
          m_offset{static_cast<double>(matrix.dx), static_cast<double>(matrix.dy)} {}

    Point vector(Point v) const { return {v.x * m_x.x + v.y * m_y.x, v.x * m_x.y + v.y * m_y.y}; }
    Point point(Point p) const {
        const Point turned = vector(p);
        return {turned.x + m_offset.x, turned.y + m_offset.y};
    }
    Point point(D2D1_POINT_2F p) const { return point(Point{static_cast<double>(p.x), static_cast<double>(p.y)}); }
    EllipticArc arc(const EllipticArc& a) const {
        return {point(a.center), vector(a.u), vector(a.v), a.start, a.sweep};
    }

private:
    Point m_x;
    Point m_y;
    Point m_offset;
};

} // namespace

void PathData::beginFigure(D2D1_POINT_2F start, D2D1_FIGURE_BEGIN begin) {
    m_points.push_back(start);
    m_commands.push_back(begin == D2D1_FIGURE_BEGIN_HOLLOW ? Command::BeginHollow : Command::BeginFilled);
    ++m_figureCount;
}

void PathData::addLine(D2D1_POINT_2F to) {
    m_points.push_back(to);
    m_commands.push_back(Command::Line);
    ++m_segmentCount;
}

void PathData::addCubic(const D2D1_BEZIER_SEGMENT& segment) {
    m_points.insert(m_points.end(), {segment.point1, segment.point2, segment.point3});
    m_commands.push_back(Command::Cubic);
    ++m_segmentCount;
}

void PathData::addQuadratic(const D2D1_QUADRATIC_BEZIER_SEGMENT& segment) {
    m_points.insert(m_points.end(), {segment.point1, segment.point2});
    m_commands.push_back(Command::Quadratic);
    ++m_segmentCount;
}

void PathData::addArc(const D2D1_ARC_SEGMENT& segment) {
    m_arcs.push_back(segment);
    m_commands.push_back(Command::Arc);
    ++m_segmentCount;
}

void PathData::setSegmentFlags(D2D1_PATH_SEGMENT flags) {
    m_flags.push_back(flags);
    m_commands.push_back(Command::Flags);
}

void PathData::endFigure(D2D1_FIGURE_END end) {
    const bool closed = end == D2D1_FIGURE_END_CLOSED;
    m_commands.push_back(closed ? Command::EndClosed : Command::EndOpen);
    m_segmentCount += closed ? 1U : 0U;
}

void PathData::addGlyph(const GlyphRecord& glyph, const Bounds& outline) {
    m_glyphs.push_back(glyph);
    m_glyphBounds.include(outline);
}

Bounds PathData::figureBounds(const D2D1_MATRIX_3X2_F& transform) const {
    const AffineMap map(transform);
    Bounds filled;
    Bounds hollow;
    Bounds* bounds = &filled;
    auto point = m_points.begin();
    auto arc = m_arcs.begin();
    D2D1_POINT_2F current{};
    for (const Command command : m_commands) {
        switch (command) {
        case Command::BeginFilled:
        case Command::BeginHollow:
            bounds = command == Command::BeginFilled ? &filled : &hollow;
            current = *point++;
            bounds->include(map.point(current));
            break;
        case Command::Line:
            current = *point++;
            bounds->include(map.point(current));
            break;
        case Command::Cubic:
            includeCubic(*bounds, map.point(current), map.point(point[0]), map.point(point[1]), map.point(point[2]));
            current = point[2];
            point += 3;
            break;
        case Command::Quadratic:
            includeQuadratic(*bounds, map.point(current), map.point(point[0]), map.point(point[1]));
            current = point[1];
            point += 2;
            break;
        case Command::Arc:
            if (const std::optional<EllipticArc> ellipse = ellipticArc(current, *arc)) {
                includeArc(*bounds, map.arc(*ellipse));
            }
            current = arc->point;
            bounds->include(map.point(current));
            ++arc;
            break;
        case Command::Flags:
        case Command::EndOpen:
        case Command::EndClosed:
            break;
        }
    }
    return filled;
}

void PathData::stream(ID2D1GeometrySink& sink) const {
    auto point = m_points.begin();
    auto arc = m_arcs.begin();
    auto flags = m_flags.begin();
    for (const Command command : m_commands) {
        switch (command) {
        case Command::BeginFilled:
            sink.BeginFigure(*point++, D2D1_FIGURE_BEGIN_FILLED);
            break;
        case Command::BeginHollow:
            sink.BeginFigure(*point++, D2D1_FIGURE_BEGIN_HOLLOW);
            break;
        case Command::Line:
            sink.AddLine(*point++);
            break;
        case Command::Cubic:
            sink.AddBezier({point[0], point[1], point[2]});
            point += 3;
            break;
        case Command::Quadratic:
            sink.AddQuadraticBezier({point[0], point[1]});
            point += 2;
            break;
        case Command::Arc:
            sink.AddArc(*arc++);
            break;
        case Command::Flags:
            sink.SetSegmentFlags(*flags++);
            break;
        case Command::EndOpen:
            sink.EndFigure(D2D1_FIGURE_END_OPEN);
            break;
        case Command::EndClosed:
            sink.EndFigure(D2D1_FIGURE_END_CLOSED);
            break;
        }
    }
}

PathData PathData::expanded() const {
    PathData result = *this;
    result.m_glyphs.clear();
    result.m_glyphBounds = {};
    for (const GlyphRecord& glyph : m_glyphs) {
        appendOutline(glyph, result);
    }
    return result;
}

Bounds PathData::bounds(const D2D1_MATRIX_3X2_F& transform) const {
    if (!hasGlyphs()) {
        return figureBounds(transform);
    }
    if (!onlyMoves(transform)) {
        return expanded().figureBounds(transform);
    }
    Bounds result = figureBounds(transform);
    const AffineMap map(transform);
    result.include(map.point(Point{m_glyphBounds.left, m_glyphBounds.top}));
    result.include(map.point(Point{m_glyphBounds.right, m_glyphBounds.bottom}));
    return result;
}

} // namespace platform
