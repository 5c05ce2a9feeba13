#pragma once

#include "fonts/FaceTraits.h"
#include "fonts/LocalizedStrings.h"

#include <string>

namespace platform {

/// A face's names in the weight-stretch-style model, and its traits in it.
struct WwsFace {
    LocalizedNames family;
    LocalizedNames face;
    FaceTraits traits;
};

/// The names of a name table that tell families and faces.
struct StoredNames {
    LocalizedNames win32Family;
    LocalizedNames win32Subfamily;
    LocalizedNames typographicFamily;
    LocalizedNames typographicSubfamily;
    LocalizedNames wwsFamily;
    LocalizedNames wwsSubfamily;
};

/// The family is what the font names as such for this model, else its typographic
/// family, else its Win32 family without the words that state weight, width or slope.
/// The face's name follows from the same source.
///
/// `stored` are the traits its tables state. Where the English face name states a weight, width or slope and the tables
/// say nothing of it, the name counts.
WwsFace wwsFace(const StoredNames& names, const FaceTraits& stored);

struct Plainness {
    /// Whether a face name says nothing but that the face is the regular one.
    bool isPlain;
    /// The number of words in it that state no weight, width or slope: "Outline", "Display", "10pt".
    unsigned otherWords;
};
Plainness plainnessOf(const LocalizedNames& faceNames);

/// Whether an English face name calls the face oblique, not italic.
bool namesOblique(const LocalizedNames& faceNames);

/// The English name of a simulated face, from its base's face name: weight or slope
/// replaced or added, in the order stretch, weight, slope.
std::wstring simulatedFaceName(const std::wstring& baseFaceName, DWRITE_FONT_SIMULATIONS simulations);

} // namespace platform
