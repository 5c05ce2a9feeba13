#include "FilledAreas.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <geometry/MbRect.h>

namespace tool {

namespace {

MbCartPoint onCurve(const MbCartPoint& a, const MbCartPoint* c, double t) {
    const double u = 1.0 - t;
    const double w[] = {u * u * u, 3.0 * u * u * t, 3.0 * u * t * t, t * t * t};
    return {w[0] * a.x + w[1] * c[0].x + w[2] * c[1].x + w[3] * c[2].x,
            w[0] * a.y + w[1] * c[0].y + w[2] * c[1].y + w[3] * c[2].y};
}

// From the curve's second differences, which bound its distance from its chords.
int chordCount(const MbCartPoint& a, const MbCartPoint* c, double tolerance) {
    constexpr double most = 64.0;
    const double first = std::hypot(a.x - 2.0 * c[0].x + c[1].x, a.y - 2.0 * c[0].y + c[1].y);
    const double second = std::hypot(c[0].x - 2.0 * c[1].x + c[2].x, c[0].y - 2.0 * c[1].y + c[2].y);
    return static_cast<int>(std::clamp(std::ceil(std::sqrt(0.75 * std::max(first, second) / tolerance)), 1.0, most));
}

double areaOf(const Loop& loop) {
    double twice = 0.0;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const MbCartPoint& a = loop[i];
        const MbCartPoint& b = loop[(i + 1) % loop.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return twice / 2.0;
}

MbRect boxOf(const Loop& loop) {
    MbRect box;
    for (const MbCartPoint& point : loop) {
        box.IncludeX(point.x);
        box.IncludeY(point.y);
    }
    return box;
}

bool overlap(const MbRect& a, const MbRect& b) {
    return a.xmin < b.xmax && b.xmin < a.xmax && a.ymin < b.ymax && b.ymin < a.ymax;
}

bool isInside(const MbCartPoint& point, const Loop& loop) {
    bool inside = false;
    for (std::size_t i = 0, j = loop.size() - 1; i < loop.size(); j = i++) {
        const MbCartPoint& a = loop[i];
        const MbCartPoint& b = loop[j];
        if ((a.y > point.y) != (b.y > point.y) && point.x < (b.x - a.x) * (point.y - a.y) / (b.y - a.y) + a.x) {
            inside = !inside;
        }
    }
    return inside;
}

void finishLoop(std::vector<Loop>& loops, Loop& loop) {
    const auto same = [](const MbCartPoint& a, const MbCartPoint& b) { return a.x == b.x && a.y == b.y; };
    loop.erase(std::unique(loop.begin(), loop.end(), same), loop.end());
    while (loop.size() > 1 && same(loop.front(), loop.back())) {
        loop.pop_back();
    }
    if (loop.size() >= 3 && areaOf(loop) != 0.0) {
        loops.push_back(std::move(loop));
    }
    loop.clear();
}

} // namespace

std::vector<Loop> LoopSink::takeLoops() {
    finishLoop(m_loops, m_loop);
    return std::exchange(m_loops, {});
}

void LoopSink::moveTo(MbCartPoint point) {
    finishLoop(m_loops, m_loop);
    m_loop.push_back(point);
}

void LoopSink::lineTo(MbCartPoint point) {
    m_loop.push_back(point);
}

void LoopSink::cubicTo(MbCartPoint control1, MbCartPoint control2, MbCartPoint end) {
    const MbCartPoint start = m_loop.back();
    const MbCartPoint c[] = {control1, control2, end};
    const int count = chordCount(start, c, m_tolerance);
    for (int i = 1; i <= count; ++i) {
        m_loop.push_back(onCurve(start, c, static_cast<double>(i) / count));
    }
}

void LoopSink::close() {
    finishLoop(m_loops, m_loop);
}

std::vector<std::vector<Loop>> filledAreas(std::vector<Loop> loops) {
    if (loops.empty()) {
        return {};
    }
    // Largest first: the largest contour of a glyph bounds ink from outside, and
    // contours turn the other way around holes.
    std::sort(loops.begin(), loops.end(),
              [](const Loop& a, const Loop& b) { return std::abs(areaOf(a)) > std::abs(areaOf(b)); });
    const bool outward = areaOf(loops.front()) > 0.0;
    std::vector<std::vector<Loop>> areas;
    for (Loop& loop : loops) {
        // The smallest part around a hole is the last one found.
        const auto around = std::find_if(areas.rbegin(), areas.rend(),
                                         [&](const auto& area) { return isInside(loop.front(), area.front()); });
        if ((areaOf(loop) > 0.0) != outward && around != areas.rend()) {
            around->push_back(std::move(loop));
        } else {
            areas.push_back({std::move(loop)});
        }
    }
    for (std::size_t i = 0; i < areas.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (overlap(boxOf(areas[i].front()), boxOf(areas[j].front()))) {
                return areas;
            }
        }
    }
    std::vector<Loop> all;
    for (std::vector<Loop>& area : areas) {
        std::move(area.begin(), area.end(), std::back_inserter(all));
    }
    return {std::move(all)};
}

} // namespace tool
