#pragma once

#include <fontconfig/fontconfig.h>

#include <string>
#include <vector>

namespace platform {

/// A face of a file, as Fontconfig lists it: the face's index in the lower half of
/// `index`, the number of the named instance (from 1; 0: none) in the upper half.
struct FontSetEntry {
    std::string file;
    int index;
};

/// The faces a collection is made of.
struct FontSet {
    std::vector<FontSetEntry> entries;
};

/// All TrueType and CFF faces of a Fontconfig configuration (null: the current one), each
/// once, in an order that depends on nothing but their paths. Empty without fonts.
FontSet readFontSet(FcConfig* config);

} // namespace platform
