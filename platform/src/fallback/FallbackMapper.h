#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <dwrite_2.h>

namespace platform {

class CFont;
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
/// their neighbours.
///
/// Any number of threads may ask at once. What was found out about a character is kept for the life of the process.
class FallbackMapper {
public:
    static FallbackMapper& system();

    /// Maps the longest stretch of text[position, position + length) that starts at `position` and is drawn by one
    /// font.
    ///
    /// `length` is cut to the text's end. `locale` is a lower-cased BCP 47 name, empty for the user's own. `baseFamily`
    /// may be null: then only the fallback order decides. The stretch ends at the latest where `length` does, even in a
    /// cluster.
    Mapping map(std::u16string_view text, std::size_t position, std::size_t length, const std::wstring& locale,
                CFontFamily* baseFamily, DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STYLE style,
                DWRITE_FONT_STRETCH stretch);
};

} // namespace platform
