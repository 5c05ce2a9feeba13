#pragma once

#include <string>

#include <Common/FontEngineExport.h>

namespace fonts {

// Metrics of a font at one size, in the unit of the capital height that they
// were asked for. All are distances, measured along the y axis.
struct SFontMetrics {
    // From the baseline up to the top of the line.
    double ascent = 0.0;
    // From the baseline down to the bottom of the line, positive.
    double descent = 0.0;
    // From the top of the capitals up to the ascent; negative where capitals
    // rise above it.
    double capitalTopToAscent = 0.0;
    // Further space between lines that the font asks for.
    double lineGap = 0.0;
};

// One font face of the system.
//
// Sizes are heights of capital letters, in any unit of length; what comes back
// is in the same unit. A face whose capital height is 0 gives infinities or NaN.
//
// Fonts belong to the engine that handed them out and live as long as it. Names
// and metrics are fetched at the first question, without a lock: a font is used
// by one thread at a time, as its engine is.
//
// A platform call that fails is thrown as oslayer::EOsLayerError.
class FONTENGINE_API IFont {
public:
    virtual ~IFont() = default;

    // The family name under which the font was asked for.
    virtual std::wstring requestedFontFamily() = 0;

    // The name of the family that the font belongs to, as a text layout wants
    // it: the first of the family's names, whatever its language. Its last
    // element is the terminating NUL; use it through c_str().
    virtual std::wstring fontFamily() = 0;

    // The em size at which the font's capitals are `capitalSize` high.
    virtual double capitalLetterSizeToFontSize(double capitalSize) = 0;

    // The font's metrics at the size at which its capitals are `capitalSize` high.
    virtual SFontMetrics metricsByCapitalLetterSize(double capitalSize) = 0;
};

} // namespace fonts
