#include "fonts/FontSet.h"

#include <algorithm>
#include <string_view>
#include <tuple>

namespace platform {

namespace {

std::string_view stringOf(const FcPattern* pattern, const char* object) {
    FcChar8* value = nullptr;
    const bool found = FcPatternGetString(pattern, object, 0, &value) == FcResultMatch;
    return found ? reinterpret_cast<const char*>(value) : std::string_view();
}

/// Bitmap and Type 1 formats have no place in the collection, and a variable font is
/// there as its named instances, not as the range of all it can be.
bool belongs(const FcPattern* pattern) {
    const std::string_view format = stringOf(pattern, FC_FONTFORMAT);
    FcBool variable = FcFalse;
    FcPatternGetBool(pattern, FC_VARIABLE, 0, &variable);
    return (format == "TrueType" || format == "CFF") && variable == FcFalse;
}

void addFonts(const FcFontSet* fonts, FontSet& set) {
    for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
        const FcPattern* const pattern = fonts->fonts[i];
        const std::string_view file = stringOf(pattern, FC_FILE);
        int index = 0;
        FcPatternGetInteger(pattern, FC_INDEX, 0, &index);
        if (!file.empty() && belongs(pattern)) {
            set.entries.push_back({std::string(file), index});
        }
    }
}

} // namespace

FontSet readFontSet(FcConfig* config) {
    FontSet set;
    if (FcConfig* const held = FcConfigReference(config)) {
        addFonts(FcConfigGetFonts(held, FcSetSystem), set);
        addFonts(FcConfigGetFonts(held, FcSetApplication), set);
        FcConfigDestroy(held);
    }
    const auto key = [](const FontSetEntry& entry) { return std::tie(entry.file, entry.index); };
    std::sort(set.entries.begin(), set.entries.end(),
              [&](const FontSetEntry& a, const FontSetEntry& b) { return key(a) < key(b); });
    const auto end = std::unique(set.entries.begin(), set.entries.end(),
                                 [&](const FontSetEntry& a, const FontSetEntry& b) { return key(a) == key(b); });
    set.entries.erase(end, set.entries.end());
    return set;
}

} // namespace platform
