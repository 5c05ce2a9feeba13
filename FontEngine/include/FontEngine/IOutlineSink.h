#pragma once

#include <Common/FontEngineExport.h>
#include <geometry/MbCartPoint.h>

namespace fonts {

/// Takes outlines: closed contours of straight lines and cubic curves, to be filled by the non-zero winding rule.
/// Implemented by the host. y points up; units are the document's.
class IOutlineSink {
public:
    virtual ~IOutlineSink() = default;

    /// Begins a contour.
    virtual void moveTo(MbCartPoint point) = 0;
    virtual void lineTo(MbCartPoint point) = 0;
    /// A cubic Bezier curve from where the contour has come to. Curves of TrueType fonts are given as cubic ones too.
    virtual void cubicTo(MbCartPoint control1, MbCartPoint control2, MbCartPoint end) = 0;
    /// Ends the contour where it began.
    virtual void close() = 0;
};

} // namespace fonts
