#include "fonts/GlyphOutline.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace platform {

namespace {

hb_draw_funcs_t* makeDrawFunctions() {
    hb_draw_funcs_t* const functions = hb_draw_funcs_create();
    hb_draw_funcs_set_move_to_func(
        functions,
        [](hb_draw_funcs_t*, void* sink, hb_draw_state_t*, float x, float y, void*) {
            static_cast<OutlineSink*>(sink)->moveTo({x, y});
        },
        nullptr, nullptr);
    hb_draw_funcs_set_line_to_func(
        functions,
        [](hb_draw_funcs_t*, void* sink, hb_draw_state_t*, float x, float y, void*) {
            static_cast<OutlineSink*>(sink)->lineTo({x, y});
        },
        nullptr, nullptr);
    hb_draw_funcs_set_quadratic_to_func(
        functions,
        [](hb_draw_funcs_t*, void* sink, hb_draw_state_t*, float controlX, float controlY, float x, float y, void*) {
            static_cast<OutlineSink*>(sink)->quadTo({controlX, controlY}, {x, y});
        },
        nullptr, nullptr);
    hb_draw_funcs_set_cubic_to_func(
        functions,
        [](hb_draw_funcs_t*, void* sink, hb_draw_state_t*, float x1, float y1, float x2, float y2, float x, float y,
           void*) {
            static_cast<OutlineSink*>(sink)->cubicTo({x1, y1}, {x2, y2}, {x, y});
        },
        nullptr, nullptr);
    hb_draw_funcs_set_close_path_func(
        functions,
        [](hb_draw_funcs_t*, void* sink, hb_draw_state_t*, void*) { static_cast<OutlineSink*>(sink)->close(); },
        nullptr, nullptr);
    hb_draw_funcs_make_immutable(functions);
    return functions;
}

/// Hands on the contours that lead somewhere. Fonts anchor marks at contours of a single point: those have no ink.
class ContourFilter final : public OutlineSink {
public:
    explicit ContourFilter(OutlineSink& sink) : m_sink(sink) {}

    void moveTo(OutlinePoint to) override {
        m_start = to;
        m_isOpen = false;
    }
    void lineTo(OutlinePoint to) override {
        if (leadsAway({to})) {
            m_sink.lineTo(to);
        }
    }
    void quadTo(OutlinePoint control, OutlinePoint to) override {
        if (leadsAway({control, to})) {
            m_sink.quadTo(control, to);
        }
    }
    void cubicTo(OutlinePoint control1, OutlinePoint control2, OutlinePoint to) override {
        if (leadsAway({control1, control2, to})) {
            m_sink.cubicTo(control1, control2, to);
        }
    }
    void close() override {
        if (m_isOpen) {
            m_sink.close();
        }
    }

private:
    /// Begins the contour with the first segment that leaves its start.
    bool leadsAway(std::initializer_list<OutlinePoint> points) {
        const auto isElsewhere = [this](OutlinePoint point) { return point.x != m_start.x || point.y != m_start.y; };
        if (!m_isOpen && std::any_of(points.begin(), points.end(), isElsewhere)) {
            m_sink.moveTo(m_start);
            m_isOpen = true;
        }
        return m_isOpen;
    }

    OutlineSink& m_sink;
    OutlinePoint m_start{0, 0};
    bool m_isOpen = false;
};

/// Calls `visit` with the curve's value wherever its derivative vanishes inside (0, 1).
template <typename Visit>
void quadraticExtremes(double p0, double p1, double p2, Visit&& visit) {
    const double denominator = p0 - 2 * p1 + p2;
    const double t = denominator != 0 ? (p0 - p1) / denominator : -1;
    if (t > 0 && t < 1) {
        const double s = 1 - t;
        visit(s * s * p0 + 2 * s * t * p1 + t * t * p2);
    }
}

template <typename Visit>
void cubicExtremes(double p0, double p1, double p2, double p3, Visit&& visit) {
    // The derivative over 3 is a t^2 + b t + c.
    const double a = p3 - 3 * p2 + 3 * p1 - p0;
    const double b = 2 * (p2 - 2 * p1 + p0);
    const double c = p1 - p0;
    const auto visitAt = [&](double t) {
        if (t > 0 && t < 1) {
            const double s = 1 - t;
            visit(s * s * s * p0 + 3 * s * s * t * p1 + 3 * s * t * t * p2 + t * t * t * p3);
        }
    };
    const double discriminant = b * b - 4 * a * c;
    if (discriminant < 0) {
        return;
    }
    // This form of the roots loses no digits when one of them is close to 0, and holds
    // for a straight derivative (a = 0) as well.
    const double q = -(b + std::copysign(std::sqrt(discriminant), b)) / 2;
    if (a != 0) {
        visitAt(q / a);
    }
    if (q != 0) {
        visitAt(c / q);
    }
}

} // namespace

void playOutline(hb_font_t* font, hb_codepoint_t glyph, OutlineSink& sink) {
    static hb_draw_funcs_t* const functions = makeDrawFunctions();
    ContourFilter filter(sink);
    OutlineSink* const filtered = &filter;
    hb_font_get_glyph_shape(font, glyph, functions, filtered);
}

void OutlineBounds::include(OutlinePoint point) {
    m_bounds.xMin = std::min(m_bounds.xMin, point.x);
    m_bounds.xMax = std::max(m_bounds.xMax, point.x);
    m_bounds.yMin = std::min(m_bounds.yMin, point.y);
    m_bounds.yMax = std::max(m_bounds.yMax, point.y);
}

void OutlineBounds::moveTo(OutlinePoint to) {
    // The start counts once something follows.
    m_current = to;
}

void OutlineBounds::lineTo(OutlinePoint to) {
    include(m_current);
    include(to);
    m_current = to;
}

void OutlineBounds::quadTo(OutlinePoint control, OutlinePoint to) {
    include(m_current);
    include(to);
    quadraticExtremes(m_current.x, control.x, to.x, [&](double x) { include({static_cast<float>(x), to.y}); });
    quadraticExtremes(m_current.y, control.y, to.y, [&](double y) { include({to.x, static_cast<float>(y)}); });
    m_current = to;
}

void OutlineBounds::cubicTo(OutlinePoint control1, OutlinePoint control2, OutlinePoint to) {
    include(m_current);
    include(to);
    cubicExtremes(m_current.x, control1.x, control2.x, to.x, [&](double x) { include({static_cast<float>(x), to.y}); });
    cubicExtremes(m_current.y, control1.y, control2.y, to.y, [&](double y) { include({to.x, static_cast<float>(y)}); });
    m_current = to;
}

GlyphBounds outlineBounds(hb_font_t* font, hb_codepoint_t glyph) {
    OutlineBounds bounds;
    playOutline(font, glyph, bounds);
    return bounds.bounds();
}

} // namespace platform
