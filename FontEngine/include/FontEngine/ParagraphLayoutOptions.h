#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <render/RichTextDocument.h>

namespace fonts {

/// What to do with lines that are wider than the box.
enum class EWrapping : std::int32_t {
    AsParagraph, ///< `WholeWords`, or `NoWrap` where the paragraph says `noWrap`.
    NoWrap,      ///< Lines end where the text says so.
    WholeWords,  ///< Lines end between words; a word that is wider than the box stands out of it.
    Words,       ///< The same, but a word that is wider than the box is torn.
    Characters   ///< Lines end between any two clusters.
};

/// Which way a paragraph reads: where its lines begin, and how letters of two directions stand beside each other.
enum class EReadingDirection : std::int32_t { LeftToRight, RightToLeft };

/// How far the baselines of a paragraph's lines are apart.
struct SLineSpacing {
    enum class EKind : std::int32_t {
        Natural, ///< As the fonts say.
        AtLeast, ///< As the fonts say, but `pitch` at least.
        Exactly  ///< `pitch`, whatever the fonts say. Lines may overlap.
    };

    EKind kind = EKind::Natural;
    /// Of baselines; at least 0.
    double pitch = 0.0;
};

/// An OpenType feature for a run.
struct SFontFeature {
    /// Four ASCII characters, such as "smcp".
    std::string tag{};
    /// 0: off, 1: on; more where the feature has alternatives.
    std::uint32_t value = 1;
};

/// How a token's text is set beside what the token itself says.
struct SRunFormat {
    /// Stretches glyphs and advances along the line; above 0. A tab keeps its width.
    double widthFactor = 1.0;
    /// Slants glyphs to the right by this angle, in degrees, between -85 and 85. Advances stay.
    double obliqueAngle = 0.0;
    /// Added after each glyph cluster of the token's text, the last one too. May be negative.
    double tracking = 0.0;
    /// Moves glyphs and bars up, or down where it is negative. Lines keep their heights.
    double baselineShift = 0.0;
    /// Pairs of letters are moved together or apart as the font says.
    bool kerning = true;
    /// In the order in which they are applied.
    std::vector<SFontFeature> features = {};
};

/// What the end of a line may do beside an inline box.
enum class EBreak : std::int32_t {
    Neutral, ///< The neighbour decides.
    Allowed,
    Forbidden,
    Forced
};

/// A box of the caller's that stands in a line in place of text: a symbol, a fraction, a picture.
struct SInlineBox {
    /// The text that it stands for; not empty. What stands there is not drawn.
    render::TextRange range{};
    double width = 0.0;
    /// From the baseline up to the box's top and down to its bottom.
    double ascent = 0.0;
    double descent = 0.0;
    EBreak before = EBreak::Neutral;
    EBreak after = EBreak::Neutral;
};

/// How much of a layout is kept. A long text has millions of glyphs.
enum class EParagraphDetail : std::int32_t {
    Lines, ///< Boxes, lines, bars, places of inline boxes, missing characters.
    All    ///< Runs with their glyphs and clusters too, and with them carets and outlines.
};

/// How CParagraphLayout lays a paragraph out. Lengths are the document's units.
struct SParagraphLayoutOptions {
    /// Of the box that lines are wrapped and aligned in; 0: nothing is wrapped. See ITextMetrics::getParagraphRects.
    double maxWidth = 0.0;
    /// Of the box that lines are aligned in vertically; 0: no limit.
    double maxHeight = 0.0;
    /// The distance between tab stops, as CRichTextDocument::tabStopWidth; above 0.
    double tabStopWidth = 40.0;
    /// The language that fallback, shapes and line breaks follow, as BCP 47 names it ("tr", "zh-Hans"); empty: none.
    std::wstring locale = {};
    EReadingDirection direction = EReadingDirection::LeftToRight;
    EWrapping wrapping = EWrapping::AsParagraph;
    SLineSpacing lineSpacing = {};
    /// One per token of the paragraph, or none at all.
    std::vector<SRunFormat> runFormats = {};
    /// In the order of their ranges, which do not overlap.
    std::vector<SInlineBox> inlineBoxes = {};
    /// The grid that baselines stand on: that of ITextMetrics. 0: none.
    double baselineGrid = 0.01;
    EParagraphDetail detail = EParagraphDetail::All;
};

} // namespace fonts
