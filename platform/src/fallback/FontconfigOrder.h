#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <dwrite_types.h>
#include <fontconfig/fontconfig.h>

#include "fonts/FontconfigPointers.h"

namespace platform {

class CFont;
class CFontCollection;

/// What an order of fallback depends on. The language is Fontconfig's name of it, empty for none in
/// particular: what the environment says about the user's language counts for nothing.
struct FallbackKey {
    std::string language;
    DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL;
    DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL;
    DWRITE_FONT_STRETCH stretch = DWRITE_FONT_STRETCH_NORMAL;

    bool operator==(const FallbackKey&) const = default;
};

/// A font as Fontconfig lists it, and what it is here.
struct ListedFont {
    PatternPtr pattern;
    CFont* font;

    /// The characters and the languages it has; null if the pattern does not say.
    const FcCharSet* coverage() const;
    const FcLangSet* languages() const;
    /// Whether its glyphs are coloured pictures.
    bool isColor() const;
    /// False for a face made for another market than that of `language`: one cut of a typeface for Chinese, Japanese
    /// and Korean has all their characters, but draws them as one of them does.
    bool isMadeFor(const std::string& language) const;
};

/// The fonts of the current Fontconfig configuration that `collection` has, best first for standing in for others.
///
/// What the configuration prefers for sans-serif in the key's language comes first. Then plain sans faces come before
/// serif, monospaced, other and, last of all, colour ones, whose glyphs may have no outlines; each in Fontconfig's
/// order for the key. The same fonts give the same order, wherever their files lie and however they are named.
std::vector<ListedFont> fontconfigOrder(const CFontCollection& collection, const FallbackKey& key);

} // namespace platform
