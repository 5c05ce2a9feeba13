#pragma once

namespace platform {

/// A point of an outline in design units, x to the right, y up from the baseline.
struct OutlinePoint {
    float x;
    float y;
};

/// Receives one glyph's contours. Each starts with a moveTo and ends with a close,
/// which draws a line back to its start where needed.
class OutlineSink {
public:
    virtual void moveTo(OutlinePoint to) = 0;
    virtual void lineTo(OutlinePoint to) = 0;
    virtual void quadTo(OutlinePoint control, OutlinePoint to) = 0;
    virtual void cubicTo(OutlinePoint control1, OutlinePoint control2, OutlinePoint to) = 0;
    virtual void close() = 0;

protected:
    ~OutlineSink() = default;
};

} // namespace platform
