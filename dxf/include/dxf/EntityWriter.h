#pragma once

#include "Drawing.h"
#include "Geometry.h"
#include "PairWriter.h"
#include <Common/FontEngineExport.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace dxf {

/// What a new entity has otherwise than the entity it replaces.
struct PieceColor {
    std::optional<int> color;               ///< Colour number; nothing: as replaced.
    std::optional<std::uint32_t> trueColor; ///< 0xRRGGBB; holds before `color`.
};

/// A paragraph text to be written. Its fields mean what those of TextEntity mean.
struct MTextPiece {
    std::wstring content; ///< With codes; see escapeMText.
    std::wstring style;   ///< Empty: STANDARD.
    Point insertion;      ///< In the world, or in the coordinates of the block.
    Point direction{1.0, 0.0, 0.0};
    Point extrusion{0.0, 0.0, 1.0};
    double height = 1.0;
    double width = 0.0;
    Attachment attachment = Attachment::TopLeft;
    LineSpacingStyle lineSpacingStyle = LineSpacingStyle::AtLeast;
    double lineSpacingFactor = 1.0;
    PieceColor color;
};

/// A one-line text to be written, standing on its baseline.
struct LinePiece {
    std::wstring content;
    std::wstring style; ///< Empty: STANDARD.
    Point insertion;    ///< Left end of the baseline, in the world or in the block's coordinates.
    Point direction{1.0, 0.0, 0.0};
    Point extrusion{0.0, 0.0, 1.0};
    double height = 1.0;
    double widthFactor = 1.0;
    double oblique = 0.0; ///< Degrees.
    PieceColor color;
};

/// Plain text as paragraph text content: `\`, `{`, `}`, `^` and doubled `%` lose their meaning, a line feed becomes
/// `\P`.
FONTENGINE_DXF_API std::wstring escapeMText(std::wstring_view plain);

/// What of a replaced entity its pieces take over: raw pairs, as they stand in the file.
struct EntityOrigin {
    std::string common;       ///< Layer, colour, line type, space and the like, colour groups excluded.
    std::string color;        ///< Groups 62, 420 and 430.
    std::string reactors;     ///< For the first piece alone.
    std::string ownExtended;  ///< Extended data of applications, for the first piece alone.
    std::uint64_t handle = 0; ///< Goes to the first piece, so that whatever refers to the text finds one.
    std::uint64_t owner = 0;
    bool hasSubclasses = false;
    bool isMText = false; ///< The text is an MTEXT itself.
    PairStyle style;
};

/// Gives out handles that no object of the drawing has.
class FONTENGINE_DXF_API HandleSource {
public:
    explicit HandleSource(std::uint64_t first) : m_next(first) {}
    /// Throws Error (BadRequest) when 64 bits do not suffice.
    std::uint64_t take();
    [[nodiscard]] std::uint64_t next() const noexcept { return m_next; }

private:
    std::uint64_t m_next;
};

/// Writes the entities that take a text's place. Handles, owner, layer and space are taken care of; lines look as they
/// do in the file; what the drawing's code page lacks is written as `\U+XXXX`. Points are in the world, or for a text
/// in a block in the block's coordinates.
///
/// Each operation throws Error (BadRequest) where the drawing's version has no such entity: see the questions below.
class FONTENGINE_DXF_API EntityWriter {
public:
    EntityWriter(const Drawing& drawing, const EntityOrigin& origin, HandleSource& handles);

    [[nodiscard]] bool hasMText() const noexcept; ///< R13 and later, and in place of an MTEXT.
    [[nodiscard]] bool hasHatch() const noexcept; ///< R14 and later.

    void mtext(const MTextPiece& piece);
    void text(const LinePiece& piece);
    /// A chain of straight lines in the plane of the first point across `extrusion`. At least two points. Before R14
    /// written in the older form, which every version reads.
    void polyline(std::span<const Point> points, bool closed, const Point& extrusion, const PieceColor& color = {});
    /// A filled area bounded by closed chains, holes where an odd number of them overlap. Chains of fewer than three
    /// points are left out; without any chain nothing is written.
    void hatch(std::span<const std::vector<Point>> loops, const Point& extrusion, const PieceColor& color = {});

    /// Number of entities written.
    [[nodiscard]] std::size_t count() const noexcept { return m_count; }
    /// The pairs written so far.
    [[nodiscard]] std::string_view pairs() const noexcept { return m_output; }

private:
    std::uint64_t begin(std::string_view type, const PieceColor& color);
    void beginPart(std::string_view type, std::uint64_t handle, std::uint64_t owner, const PieceColor& color);
    void writeColor(const PieceColor& color);
    void subclass(std::string_view name);
    void end();
    void writeChunks(const std::wstring& content);
    void writeName(int code, const std::wstring& name);
    void heavyPolyline(std::span<const Point> points, bool closed, const Transform& plane, const PieceColor& color);
    [[nodiscard]] std::string encoded(std::wstring_view text) const;

    const Drawing& m_drawing;
    const EntityOrigin& m_origin;
    HandleSource& m_handles;
    std::string m_output;
    PairWriter m_pairs;
    std::size_t m_count = 0;
};

} // namespace dxf
