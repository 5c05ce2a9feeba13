#pragma once

#include "Geometry.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace dxf {

enum class TextKind : std::uint8_t {
    MText,
    Text,
    Attrib,    ///< A value that belongs to an INSERT; stands in the world, not in the block.
    AttDef,    ///< Shown by CAD programs only where it is constant or outside a block (there as its tag).
    Dimension, ///< Override text; empty or with `<>` for the measured value.
    MultiLeader,
    TableCell,
};

/// Where the insertion point of a paragraph text stands in its box.
enum class Attachment : std::uint8_t {
    TopLeft = 1,
    TopCenter,
    TopRight,
    MiddleLeft,
    MiddleCenter,
    MiddleRight,
    BottomLeft,
    BottomCenter,
    BottomRight,
};

enum class HorizontalJustification : std::uint8_t {
    Left,
    Center,
    Right,
    Aligned, ///< Baseline from the first to the second point; the height follows the width.
    Middle,  ///< The middle of the text's box stands at the second point, vertical justification ignored.
    Fit,     ///< Baseline from the first to the second point; the width factor follows.
};

enum class VerticalJustification : std::uint8_t { Baseline, Bottom, Middle, Top };

enum class LineSpacingStyle : std::uint8_t {
    AtLeast = 1, ///< A line with larger characters is given more room.
    Exact = 2,
};

enum class DrawingDirection : std::uint8_t { LeftToRight = 1, TopToBottom = 3, ByStyle = 5 };

// X11 makes `None` a macro; a host that includes it gets it back.
#pragma push_macro("None")
#undef None
enum class ColumnKind : std::uint8_t { None, Static, Dynamic };

/// Columns of a paragraph text.
struct Columns {
    ColumnKind kind = ColumnKind::None;
    int count = 0;
    double width = 0.0;
    double gutter = 0.0;
    bool autoHeight = false;
    bool reversed = false;
    double definedHeight = 0.0;
    std::vector<double> heights;              ///< Of the columns, for dynamic ones without automatic height.
    std::vector<std::uint64_t> linkedColumns; ///< Older drawings: the entities that hold the other columns' text.
    friend bool operator==(const Columns&, const Columns&) = default;
};
#pragma pop_macro("None")

/// One text of a drawing, with everything needed to place it. Missing groups have their defaults.
struct TextEntity {
    TextKind kind = TextKind::MText;

    /// The text with its codes, chunks joined, decoded. Codes are for mtext::parse where isParagraphText() holds, for
    /// mtext::parseText otherwise.
    std::wstring content;
    std::size_t replacedBytes = 0; ///< U+FFFD that stand for bytes the drawing's code page does not define.

    // What it is and where it belongs.
    std::size_t ordinal = 0;       ///< Index in Drawing::texts; that list's to give.
    std::uint64_t offset = 0;      ///< Of the entity's first byte in the file. Several cells share their table's.
    std::uint64_t line = 0;        ///< Of the entity's first line.
    std::uint64_t handle = 0;      ///< 0: none.
    std::uint64_t owner = 0;       ///< 0: none.
    std::wstring layer;            ///< "0" when missing.
    std::wstring style;            ///< Name of a text style, "STANDARD" when missing.
    std::uint64_t styleHandle = 0; ///< Where the style is named by handle; already resolved into `style`.
    int color = 256;               ///< 256: by layer, 0: by block.
    std::optional<std::uint32_t> trueColor; ///< 0xRRGGBB.
    bool invisible = false;                 ///< Group 60, or an attribute that is not displayed.
    bool paperSpace = false;
    std::wstring layout; ///< Name of the layout (group 410); empty when missing.
    std::wstring block;  ///< Block whose definition holds the text; empty for entities of the drawing.

    // Placement of every kind.
    Point insertion; ///< World for paragraph texts, the entity's own plane for the others.
    Point extrusion{0.0, 0.0, 1.0};
    double height = 0.0;   ///< Of capitals; always positive: from the style or `$TEXTSIZE` when missing.
    double rotation = 0.0; ///< Degrees, in the entity's own plane. Paragraph texts: used without direction.

    // Paragraph texts: MText, Dimension, MultiLeader, TableCell, attributes of several lines.
    std::optional<Point> direction; ///< Of the baseline, in the world. The last of groups 11 and 50 holds.
    Attachment attachment = Attachment::TopLeft;
    double width = 0.0;          ///< Where lines wrap; 0: they do not.
    double definedHeight = 0.0;  ///< Group 46; 0: none.
    double measuredWidth = 0.0;  ///< Group 42: the ink the writing program saw; 0: not said.
    double measuredHeight = 0.0; ///< Group 43.
    LineSpacingStyle lineSpacingStyle = LineSpacingStyle::AtLeast;
    double lineSpacingFactor = 1.0; ///< 0.25 to 4.
    DrawingDirection drawingDirection = DrawingDirection::LeftToRight;
    Columns columns;

    // One-line texts: Text, and attributes of one line.
    std::optional<Point> alignmentPoint;
    HorizontalJustification horizontal = HorizontalJustification::Left;
    VerticalJustification vertical = VerticalJustification::Baseline;
    double widthFactor = 1.0;
    double oblique = 0.0; ///< Degrees.
    bool backward = false;
    bool upsideDown = false;

    // Attributes.
    bool multiLine = false; ///< An attribute that holds a paragraph text.
    bool constant = false;
    std::wstring tag;
    std::wstring prompt; ///< AttDef.

    // Dimensions and tables.
    std::wstring graphicsBlock; ///< The block that shows it; its texts stand there too (see placeTexts).
    std::wstring dimStyle;
    std::optional<double> measurement;
    int row = 0;    ///< TableCell, counted from 0.
    int column = 0; ///< TableCell, counted from 0.

    /// True when the content is a paragraph text and the fields above under that heading hold.
    [[nodiscard]] bool isParagraphText() const noexcept {
        return multiLine || (kind != TextKind::Text && kind != TextKind::Attrib && kind != TextKind::AttDef);
    }
    friend bool operator==(const TextEntity&, const TextEntity&) = default;
};

/// A reference to a block.
struct Insert {
    std::wstring blockName; ///< Of the block it shows.
    std::wstring block;     ///< Block whose definition holds the reference; empty for entities of the drawing.
    std::wstring layer;
    int color = 256;
    std::optional<std::uint32_t> trueColor;
    std::uint64_t handle = 0;
    bool invisible = false;
    bool paperSpace = false;
    std::wstring layout;
    Point insertion; ///< In the entity's own plane.
    Point scale{1.0, 1.0, 1.0};
    double rotation = 0.0; ///< Degrees.
    int columns = 1;
    int rows = 1;
    double columnSpacing = 0.0;
    double rowSpacing = 0.0;
    Point extrusion{0.0, 0.0, 1.0};
    bool ofTextEntity = false; ///< Stands for a dimension or table, whose graphics the block holds.
};

/// The name and base point of a block definition.
struct Block {
    std::wstring name;
    Point base;
    bool paperSpace = false;
};

} // namespace dxf
