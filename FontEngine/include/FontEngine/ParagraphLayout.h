#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <Common/FontEngineExport.h>
#include <FontEngine/IFontEngine.h>
#include <FontEngine/IOutlineSink.h>
#include <FontEngine/ParagraphLayoutOptions.h>
#include <geometry/MbCartPoint.h>
#include <geometry/MbRect.h>
#include <render/RichTextDocument.h>

namespace fonts {

/// An index that names nothing: a cluster that no run draws has it.
inline constexpr std::uint32_t noIndex = 0xFFFFFFFFU;

/// A font face that glyphs were taken from, for whoever draws them.
struct SFontFace {
    /// The family's name, and the face's within it ("Noto Sans", "Condensed Bold").
    std::wstring family;
    std::wstring face;
    /// The Win32 family name, by which documents name a font; empty where the platform does not know it.
    std::wstring win32Family;
    /// The platform made the face bold, or slanted it by 20 degrees, since the family has none that is.
    bool isEmboldened = false;
    bool isSlanted = false;
    /// The font file; empty where the face comes from somewhere else.
    std::wstring file;
    /// Which face of the file. On Linux the upper 16 bits number the named instance of a variable font from 1 on, as
    /// FreeType and Fontconfig do.
    std::uint32_t index = 0;
    /// Height of capitals, from the baseline up to the top of a line and from there down to its bottom; in ems.
    double capHeight = 0.0;
    double ascent = 0.0;
    double descent = 0.0;
};

/// One line. Its runs and clusters follow each other in CParagraphLayout::runs and ::clusters.
struct SLine {
    /// With its trailing blanks and its newline.
    render::TextRange range;
    /// Units at the line's end that are blank, the newline among them, and of these the newline's.
    std::uint32_t trailingBlanks = 0;
    std::uint32_t newline = 0;
    /// The baseline's y.
    double baseline = 0.0;
    double top = 0.0;
    double bottom = 0.0;
    /// Where the line begins at its left, and how wide it is without its trailing blanks.
    double left = 0.0;
    double width = 0.0;
    std::uint32_t firstRun = 0;
    std::uint32_t runCount = 0;
    std::uint32_t firstCluster = 0;
    std::uint32_t clusterCount = 0;
};

/// A glyph where it is drawn.
struct SGlyph {
    /// In the run's face.
    std::uint16_t id = 0;
    /// It leaves ink.
    bool hasInk = false;
    /// How far the pen moves, along the line; the shaper's advance times the run's width factor.
    double advance = 0.0;
    /// Where the outline's origin stands.
    MbCartPoint origin;
};

/// Glyphs of one token, in one face, size and direction, on one line.
struct SRun {
    /// In CParagraphLayout::face().
    std::uint32_t face = 0;
    /// In the paragraph's tokens.
    std::uint32_t token = 0;
    std::uint32_t line = 0;
    render::TextRange range;
    /// The glyphs' size: the em's height.
    double emSize = 0.0;
    /// Bidirectional embedding level; odd: right to left.
    std::uint32_t level = 0;
    /// The left end of its baseline, right to left too.
    MbCartPoint origin;
    /// From there to its right end.
    double width = 0.0;
    /// Each glyph's outline is stretched by `widthFactor` and then slanted: x' = widthFactor x + slant y.
    double widthFactor = 1.0;
    double slant = 0.0;
    /// Bounds of its outlines; empty without ink.
    MbRect ink;
    /// In CParagraphLayout::glyphs(), in reading order.
    std::uint32_t firstGlyph = 0;
    std::uint32_t glyphCount = 0;

    [[nodiscard]] bool isRightToLeft() const noexcept { return (level & 1U) != 0; }
};

/// The smallest piece of text that has a place of its own: a letter with its marks, a ligature, a newline, a tab.
struct SCluster {
    render::TextRange range;
    /// As wide as it moves the pen, as high as its line.
    MbRect rect;
    std::uint32_t line = 0;
    /// `noIndex` for what no run draws: an inline box, on Windows a tab.
    std::uint32_t run = noIndex;
    /// In CParagraphLayout::glyphs().
    std::uint32_t firstGlyph = 0;
    std::uint32_t glyphCount = 0;
    bool hasInk = false;
    bool isBlank = false;
    bool isNewline = false;
    bool isRightToLeft = false;
    /// A line may end after it.
    bool canBreakAfter = false;
};

enum class EBarKind : std::int32_t { Underline, Strikethrough };

/// A bar under text or through it.
struct SBar {
    EBarKind kind = EBarKind::Underline;
    MbRect rect;
    std::uint32_t line = 0;
    /// The token above the bar's beginning: its colour is the bar's.
    std::uint32_t token = 0;
};

/// Where an inline box stands.
struct SInlineBoxPlace {
    /// In SParagraphLayoutOptions::inlineBoxes.
    std::uint32_t box = 0;
    MbRect rect;
    std::uint32_t line = 0;
};

/// Where text is inserted.
struct SCaret {
    std::uint32_t line = 0;
    double x = 0.0;
    double bottom = 0.0;
    double top = 0.0;
    /// The text that the caret is attached to reads from right to left.
    bool isRightToLeft = false;
};

/// What a point hits.
struct SHit {
    /// The first unit of the cluster that is hit or nearest.
    std::uint32_t position = 0;
    /// Its far half in reading direction is hit.
    bool isTrailing = false;
    /// The point is inside of the cluster's rectangle.
    bool isInside = false;
    /// Where text would be inserted: before the cluster or, trailing, behind it.
    std::uint32_t insertion = 0;
};

/// A character that no installed font has.
struct SMissingCharacter {
    char32_t character = 0;
    /// Where it stands first.
    std::uint32_t position = 0;
    std::uint32_t count = 0;
};

/// Text that is set in another family than its token asks for.
struct SReplacedFamily {
    std::uint32_t token = 0;
    render::TextRange range;
    /// In CParagraphLayout::face().
    std::uint32_t face = 0;
};

struct SParagraphLayoutData;

/// One paragraph, laid out: made once, asked as often as one likes.
///
/// In a box with a width, box, ink box, baselines and runs are those of ITextMetrics. Lengths are the document's units.
/// The origin is the top-left corner of the paragraph's layout box, x points to the right and y up, so that text lies
/// at y <= 0. Positions and lengths of text are UTF-16 units of the paragraph's text, its tokens' one after the other.
///
///     const auto layout = fonts::CParagraphLayout::make(paragraph, *engine, {.maxWidth = 60.0});
///     for (const fonts::SRun& run : layout.runs()) {
///         layout.outline(run, sink);
///     }
///
/// A value: copies share what was made and never change. Any thread may read one at any time, whatever becomes of the
/// engine, the paragraph and the options. It keeps 96 bytes for a letter; with EParagraphDetail::Lines, none.
class FONTENGINE_API CParagraphLayout {
public:
    /// Lays `paragraph` out. Engine, paragraph and options are read during the call only; calls that share an engine
    /// take turns. A paragraph of one empty token is an empty line, as high as its font says.
    ///
    /// Throws std::invalid_argument for options that nothing can be made of, and says which; what the operations of
    /// ITextMetrics throw on the same grounds as they do (common::ECheckViolation, which is no std::exception, for a
    /// paragraph without tokens); std::runtime_error for run formats that the platform has no means for, which on
    /// Windows 7 are width factor, tracking and kerning.
    [[nodiscard]] static CParagraphLayout make(const render::CRichTextParagraph& paragraph, IFontEngine& engine,
                                               const SParagraphLayoutOptions& options = {});

    /// An empty paragraph without lines.
    CParagraphLayout();

    /// The paragraph's text.
    [[nodiscard]] const std::wstring& text() const noexcept;

    /// What the lines take: their heights, and the width of the widest without its trailing blanks.
    [[nodiscard]] const MbRect& box() const noexcept;
    /// Bounds of outlines and bars; empty without ink. Inline boxes do not count.
    [[nodiscard]] const MbRect& ink() const noexcept;
    /// The box's width if nothing were wrapped.
    [[nodiscard]] double naturalWidth() const noexcept;

    /// From top to bottom; at least one.
    [[nodiscard]] std::span<const SLine> lines() const noexcept;
    /// Line by line, in reading order within a line.
    [[nodiscard]] std::span<const SRun> runs() const noexcept;
    /// Of all runs, run by run.
    [[nodiscard]] std::span<const SGlyph> glyphs() const noexcept;
    [[nodiscard]] std::span<const SGlyph> glyphs(const SRun& run) const;
    /// In the order of the text.
    [[nodiscard]] std::span<const SCluster> clusters() const noexcept;
    [[nodiscard]] std::span<const SBar> bars() const noexcept;
    [[nodiscard]] std::span<const SInlineBoxPlace> inlineBoxes() const noexcept;

    /// How many faces the runs use.
    [[nodiscard]] std::size_t faceCount() const noexcept;
    /// Asks the platform anew each time. Throws std::out_of_range, and oslayer::EOsLayerError when the platform fails.
    [[nodiscard]] SFontFace face(std::size_t index) const;

    /// What is drawn: the outlines of a glyph of a run, of a whole run, of all runs and bars. Nothing is kept of them:
    /// each call takes them from the font. Exceptions of the sink pass through. Throws oslayer::EOsLayerError when the
    /// platform fails.
    void outline(const SRun& run, const SGlyph& glyph, IOutlineSink& sink) const;
    void outline(const SRun& run, IOutlineSink& sink) const;
    void outline(IOutlineSink& sink) const;

    /// The caret before the cluster that holds `position`, or behind it where `isTrailing`: behind a line's last
    /// cluster it stands at that line's end, before the next one's first at the next line's beginning. From the end of
    /// the text on: behind all text.
    [[nodiscard]] SCaret caret(std::uint32_t position, bool isTrailing = false) const;
    /// The cluster under a point, else the nearest of the nearest line. A newline is never hit trailing.
    [[nodiscard]] SHit hit(MbCartPoint point) const;
    /// What to paint behind selected text: the rectangles of all clusters that the range touches, neighbours joined,
    /// line by line and from left to right.
    [[nodiscard]] std::vector<MbRect> rectsOf(render::TextRange range) const;

    /// In the order in which they stand first.
    [[nodiscard]] std::span<const SMissingCharacter> missing() const noexcept;
    /// In the order of the text; asks the platform for names. Needs EParagraphDetail::All.
    [[nodiscard]] std::vector<SReplacedFamily> replacedFamilies() const;

private:
    explicit CParagraphLayout(std::shared_ptr<const SParagraphLayoutData> data) noexcept;

    std::shared_ptr<const SParagraphLayoutData> m_data;
};

} // namespace fonts
