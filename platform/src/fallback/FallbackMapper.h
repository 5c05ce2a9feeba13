#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <dwrite_2.h>

#include "fallback/FallbackOrderCache.h"

namespace platform {

class CFont;
class CFontCollection;
class CFontFamily;

/// Which font draws a stretch of text.
struct Mapping {
    /// UTF-16 units from the asked position on; 0 only if nothing was asked.
    std::uint32_t length = 0;
    /// Interned, not counted for the caller; null where no installed font has the characters.
    CFont* font = nullptr;
    float scale = 1.0F;
};

/// Decides which installed font draws which characters.
///
/// The base family comes first; what it lacks is drawn by the first font in Fontconfig's order for the locale, weight
/// and style that has it. A cluster (a base with its marks, joiners and variation selectors, an emoji sequence, a
/// syllable of jamo) goes to one font wherever some font has all of it. Controls, newlines and bidi marks stay with
/// their neighbours, and punctuation that the base lacks with the fallback font of its neighbours, if that has it.
/// A variation selector without a base and a lone surrogate have no font.
///
/// Any number of threads may ask at once. What was found out about a character is kept.
class FallbackMapper {
public:
    /// The mapper to the fonts of the system.
    static FallbackMapper& system();

    /// Maps to fonts of `collection`, which outlives the mapper.
    explicit FallbackMapper(const CFontCollection& collection) : m_orders(collection) {}

    /// Maps the longest stretch of text[position, position + length) that starts at `position` and is drawn by one
    /// font.
    ///
    /// `length` is cut to the text's end. `locale` is a BCP 47 name, empty for the user's own. `baseFamily` may be
    /// null: then the first font of the order stands in for it. Fonts are members of the collection's own families,
    /// also where the base is a substitute of one. The stretch ends at the latest where `length` does, even in a
    /// cluster.
    Mapping map(std::u16string_view text, std::size_t position, std::size_t length, const std::wstring& locale,
                CFontFamily* baseFamily, DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STYLE style,
                DWRITE_FONT_STRETCH stretch);

private:
    FallbackOrderCache m_orders;
};

} // namespace platform
