#pragma once

#include <cstddef>
#include <string_view>

#include <boost/container/small_vector.hpp>
#include <unicode/uscript.h>

namespace platform {

/// A grapheme as fallback sees it.
struct FallbackCluster {
    enum class Kind : unsigned char {
        /// Something to draw.
        Text,
        /// Controls, newlines, joiners, bidi marks: drawn by nobody, so they go with whatever stands beside them.
        Rider,
        /// A variation selector with nothing to vary.
        Selector,
        /// Half of a surrogate pair.
        LoneSurrogate
    };

    Kind kind = Kind::Text;
    /// Whether a variation selector asks for the colour form of an emoji.
    bool wantsEmoji = false;
    std::u16string_view units;
    /// The characters that a font must have, in order; empty unless the kind is Text.
    boost::container::small_vector<char32_t, 8> characters;

    std::u32string_view needed() const { return {characters.data(), characters.size()}; }
};

/// Takes the grapheme text[start, end) apart.
FallbackCluster fallbackCluster(std::u16string_view text, std::size_t start, std::size_t end);

UScriptCode scriptOf(char32_t character);

/// Whether a character belongs to no script of its own: punctuation, symbols, digits, spaces, marks.
bool isCommon(char32_t character);

/// Whether nothing is drawn for a character by itself.
bool isRider(char32_t character);

/// The characters in canonical composition, which is how a shaper looks for them where a font lacks a mark.
boost::container::small_vector<char32_t, 8> composed(std::u16string_view units);

} // namespace platform
