#pragma once

#include <vector>

#include <FontEngine/IOutlineSink.h>
#include <geometry/MbCartPoint.h>

namespace tool {

using Loop = std::vector<MbCartPoint>;

// Takes outlines as chains of straight lines that stay within `tolerance` of their
// curves. Contours without area are left out.
class LoopSink final : public fonts::IOutlineSink {
public:
    explicit LoopSink(double tolerance) : m_tolerance(tolerance) {}

    // The closed contours that came so far.
    std::vector<Loop> takeLoops();

    void moveTo(MbCartPoint point) override;
    void lineTo(MbCartPoint point) override;
    void cubicTo(MbCartPoint control1, MbCartPoint control2, MbCartPoint end) override;
    void close() override;

private:
    double m_tolerance;
    Loop m_loop;
    std::vector<Loop> m_loops;
};

// Groups the contours of one glyph into areas that show the glyph where every
// other area between contours is filled: overlapping parts come apart, each with
// its own holes.
std::vector<std::vector<Loop>> filledAreas(std::vector<Loop> loops);

} // namespace tool
