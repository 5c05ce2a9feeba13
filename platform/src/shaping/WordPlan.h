#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include <hb.h>

#include "shaping/Shaper.h"

namespace platform {

/// Whether a word has a space before and after it in its run. At a run's edge it has none.
struct WordEdges {
    bool spaceBefore = false;
    bool spaceAfter = false;

    bool operator==(const WordEdges&) const = default;
};

/// A word as shaped between its edges.
struct ShapedWord {
    /// False if the word's shapes may depend on more than a space next to it: then its run is shaped as a whole.
    bool isSeparable = false;
    /// Breaking the text between the word and the space after it changes shapes.
    bool spaceAfterIsUnsafe = false;
    /// Of the space before the word, which the word may have drawn nearer.
    std::int32_t spaceAdvance = 0;
    /// Clusters count from the word's start.
    ShapedRun glyphs;
};

/// How words of one font, script, language and direction, kerned or not, are shaped apart from each other.
///
/// That is right as long as nothing acts across a space. HarfBuzz tells: a word is shaped with two spaces on either
/// side, and if what stands further out could change anything, the outer spaces are marked as unsafe to concatenate.
/// Kerning between a word and the space next to it is part of the word.
class WordPlan {
public:
    /// Words are no longer than this.
    static constexpr std::size_t maxWord = 64;

    /// Of the text of `request`, nothing is used.
    explicit WordPlan(const ShapeRequest& request);

    /// Whether any word of this font can be shaped apart.
    [[nodiscard]] bool isSeparable() const noexcept { return m_isSeparable; }
    /// A space that no word has drawn nearer.
    [[nodiscard]] const ShapedGlyph& space() const noexcept { return m_space; }

    [[nodiscard]] ShapedWord shape(std::u16string_view word, WordEdges edges) const;

private:
    [[nodiscard]] bool isSpace(const ShapedGlyph& glyph, std::uint32_t cluster) const noexcept;
    /// A space that is as wide as it is alone, too.
    [[nodiscard]] bool isPlainSpace(const ShapedGlyph& glyph, std::uint32_t cluster) const noexcept;
    [[nodiscard]] ShapedRun shapeText(std::u16string_view text, std::span<const hb_feature_t> features) const;

    ShapeRequest m_request;
    ShapedGlyph m_space{};
    bool m_isSeparable = false;
    /// Kerning marks every space as unsafe, so the proof has to do without it.
    bool m_kernsSpaces = false;
};

} // namespace platform
