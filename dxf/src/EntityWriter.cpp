#include <dxf/CodePage.h>
#include <dxf/EntityWriter.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace dxf {
namespace {

constexpr int versionR13 = 1012;
constexpr int versionR14 = 1014;
constexpr unsigned utf8Page = 65001;

/// A point of the world in the coordinates of a plane through the origin.
Point inPlane(const Transform& plane, const Point& point) {
    return {dot(point, plane.xAxis), dot(point, plane.yAxis), dot(point, plane.zAxis)};
}

/// Control characters cannot stand in a line; the format writes them as a caret and a letter.
std::wstring withoutControls(std::wstring_view text) {
    constexpr wchar_t firstPrintable = 0x20;
    std::wstring result;
    result.reserve(text.size());
    for (const wchar_t c : text) {
        if (c >= 0 && c < firstPrintable) {
            result += L'^';
            result += static_cast<wchar_t>(c + L'@');
        } else {
            result += c;
        }
    }
    return result;
}

bool isLeadSurrogate(wchar_t c) {
    return (static_cast<std::uint32_t>(c) & 0xFFFFFC00U) == 0xD800U;
}

[[noreturn]] void refuse(const std::string& what) {
    throw Error(ErrorKind::BadRequest, 0, "The drawing's version " + what);
}

} // namespace

std::wstring escapeMText(std::wstring_view plain) {
    std::wstring result;
    result.reserve(plain.size());
    for (std::size_t i = 0; i < plain.size(); ++i) {
        const wchar_t c = plain[i];
        const wchar_t following = i + 1 < plain.size() ? plain[i + 1] : L'\0';
        if (c == L'\\' || c == L'{' || c == L'}') {
            result += L'\\';
            result += c;
        } else if (c == L'^') {
            result += L"^ "; // A caret and a blank are a caret.
        } else if (c == L'%' && (following == L'%' || following == L'<')) {
            result += L"\\U+0025"; // Neither a special character nor a field begins here.
        } else if (c == L'\n') {
            result += L"\\P";
        } else {
            result += c;
        }
    }
    return result;
}

std::uint64_t HandleSource::take() {
    if (m_next == std::numeric_limits<std::uint64_t>::max()) {
        throw Error(ErrorKind::BadRequest, 0, "The drawing has no handles left for new entities.");
    }
    return m_next++;
}

EntityWriter::EntityWriter(const Drawing& drawing, const EntityOrigin& origin, HandleSource& handles)
    : m_drawing(drawing), m_origin(origin), m_handles(handles), m_pairs(m_output, origin.style) {}

bool EntityWriter::hasMText() const noexcept {
    // Whatever version a drawing names, or none: who reads the one reads the other.
    return m_origin.isMText || m_drawing.header.versionNumber() >= versionR13;
}

bool EntityWriter::hasHatch() const noexcept {
    return m_drawing.header.versionNumber() >= versionR14;
}

std::string EntityWriter::encoded(std::wstring_view text) const {
    return encodeText(withoutControls(text), m_drawing.utf8 ? utf8Page : m_drawing.codePage);
}

void EntityWriter::subclass(std::string_view name) {
    if (m_origin.hasSubclasses) {
        m_pairs.bytes(100, name);
    }
}

void EntityWriter::writeColor(const PieceColor& color) {
    if (!color.color && !color.trueColor) {
        m_pairs.raw(m_origin.color);
    }
    if (color.color) {
        m_pairs.integer(62, *color.color);
    }
    if (color.trueColor) {
        m_pairs.integer(420, *color.trueColor);
    }
}

void EntityWriter::beginPart(std::string_view type, std::uint64_t handle, std::uint64_t owner,
                             const PieceColor& color) {
    m_pairs.bytes(0, type);
    if (handle != 0) {
        m_pairs.handle(5, handle);
    }
    if (m_count == 0 && handle == m_origin.handle) {
        m_pairs.raw(m_origin.reactors);
    }
    if (owner != 0) {
        m_pairs.handle(330, owner);
    }
    subclass("AcDbEntity");
    m_pairs.raw(m_origin.common);
    writeColor(color);
}

std::uint64_t EntityWriter::begin(std::string_view type, const PieceColor& color) {
    const bool takesOver = m_count == 0 || m_origin.handle == 0;
    const std::uint64_t handle = takesOver ? m_origin.handle : m_handles.take();
    beginPart(type, handle, m_origin.owner, color);
    return handle;
}

void EntityWriter::end() {
    if (m_count == 0) {
        m_pairs.raw(m_origin.ownExtended);
    }
    ++m_count;
}

void EntityWriter::writeName(int code, const std::wstring& name) {
    m_pairs.bytes(code, name.empty() ? "STANDARD" : encoded(name));
}

/// Chunks of at most 250 bytes. Readers that decode chunk by chunk exist, so none ends inside a character.
void EntityWriter::writeChunks(const std::wstring& content) {
    constexpr std::size_t longest = 250;
    std::wstring_view rest = content;
    while (true) {
        std::size_t length = std::min(rest.size(), longest);
        std::string chunk = encoded(rest.substr(0, length));
        while (chunk.size() > longest) {
            length = std::max<std::size_t>(length / 2, 1);
            length += isLeadSurrogate(rest[length - 1]) ? 1 : 0;
            chunk = encoded(rest.substr(0, length));
        }
        if (length < rest.size() && isLeadSurrogate(rest[length - 1])) {
            chunk = encoded(rest.substr(0, --length));
        }
        rest.remove_prefix(length);
        m_pairs.bytes(rest.empty() ? 1 : 3, chunk);
        if (rest.empty()) {
            return;
        }
    }
}

void EntityWriter::mtext(const MTextPiece& piece) {
    if (!hasMText()) {
        refuse("has no paragraph texts; write one-line texts.");
    }
    begin("MTEXT", piece.color);
    subclass("AcDbMText");
    m_pairs.point(10, piece.insertion);
    m_pairs.real(40, piece.height);
    m_pairs.real(41, piece.width);
    m_pairs.integer(71, static_cast<int>(piece.attachment));
    m_pairs.integer(72, static_cast<int>(DrawingDirection::LeftToRight));
    writeChunks(piece.content);
    writeName(7, piece.style);
    m_pairs.point(210, piece.extrusion);
    m_pairs.point(11, piece.direction);
    m_pairs.integer(73, static_cast<int>(piece.lineSpacingStyle));
    m_pairs.real(44, piece.lineSpacingFactor);
    end();
}

void EntityWriter::text(const LinePiece& piece) {
    const Transform plane = Transform::fromExtrusion(piece.extrusion);
    const Point direction = inPlane(plane, piece.direction);
    begin("TEXT", piece.color);
    subclass("AcDbText");
    m_pairs.point(10, inPlane(plane, piece.insertion));
    m_pairs.real(40, piece.height);
    m_pairs.bytes(1, encoded(piece.content));
    m_pairs.real(50, std::atan2(direction.y, direction.x) * 180.0 / std::numbers::pi);
    m_pairs.real(41, piece.widthFactor);
    m_pairs.real(51, piece.oblique);
    writeName(7, piece.style);
    m_pairs.point(210, plane.zAxis);
    subclass("AcDbText");
    end();
}

void EntityWriter::heavyPolyline(std::span<const Point> points, bool closed, const Transform& plane,
                                 const PieceColor& color) {
    const std::uint64_t handle = begin("POLYLINE", color);
    const double elevation = inPlane(plane, points.front()).z;
    subclass("AcDb2dPolyline");
    m_pairs.integer(66, 1);
    m_pairs.point(10, {0.0, 0.0, elevation});
    m_pairs.integer(70, closed ? 1 : 0);
    m_pairs.point(210, plane.zAxis);
    end();
    const auto partHandle = [&] { return handle != 0 ? m_handles.take() : 0; };
    const std::uint64_t owner = m_origin.owner != 0 ? handle : 0;
    for (const Point& point : points) {
        beginPart("VERTEX", partHandle(), owner, color);
        subclass("AcDbVertex");
        subclass("AcDb2dVertex");
        const Point flat = inPlane(plane, point);
        m_pairs.point(10, {flat.x, flat.y, elevation});
    }
    beginPart("SEQEND", partHandle(), owner, color);
}

void EntityWriter::polyline(std::span<const Point> points, bool closed, const Point& extrusion,
                            const PieceColor& color) {
    if (points.size() < 2) {
        throw Error(ErrorKind::BadRequest, 0, "A polyline needs two points at least.");
    }
    const Transform plane = Transform::fromExtrusion(extrusion);
    if (m_drawing.header.versionNumber() < versionR14) {
        heavyPolyline(points, closed, plane, color);
        return;
    }
    begin("LWPOLYLINE", color);
    subclass("AcDbPolyline");
    m_pairs.integer(90, static_cast<std::int64_t>(points.size()));
    m_pairs.integer(70, closed ? 1 : 0);
    m_pairs.real(38, inPlane(plane, points.front()).z);
    for (const Point& point : points) {
        m_pairs.point2d(10, inPlane(plane, point));
    }
    m_pairs.point(210, plane.zAxis);
    end();
}

void EntityWriter::hatch(std::span<const std::vector<Point>> loops, const Point& extrusion, const PieceColor& color) {
    if (!hasHatch()) {
        refuse("has no filled areas; write polylines.");
    }
    constexpr std::size_t fewest = 3;
    const auto encloses = [](const std::vector<Point>& loop) { return loop.size() >= fewest; };
    const auto first = std::ranges::find_if(loops, encloses);
    if (first == loops.end()) {
        return;
    }
    const Transform plane = Transform::fromExtrusion(extrusion);
    begin("HATCH", color);
    subclass("AcDbHatch");
    m_pairs.point(10, {0.0, 0.0, inPlane(plane, first->front()).z});
    m_pairs.point(210, plane.zAxis);
    m_pairs.bytes(2, "SOLID");
    m_pairs.integer(70, 1); // Filled.
    m_pairs.integer(71, 0); // Not tied to the objects around it.
    m_pairs.integer(91, std::ranges::count_if(loops, encloses));
    for (const std::vector<Point>& loop : loops) {
        if (!encloses(loop)) {
            continue;
        }
        constexpr int polylineLoop = 2;
        m_pairs.integer(92, polylineLoop);
        m_pairs.integer(72, 0); // No arcs.
        m_pairs.integer(73, 1); // Closed.
        m_pairs.integer(93, static_cast<std::int64_t>(loop.size()));
        for (const Point& point : loop) {
            m_pairs.point2d(10, inPlane(plane, point));
        }
        m_pairs.integer(97, 0); // No source objects.
    }
    m_pairs.integer(75, 0); // Every other area is filled.
    m_pairs.integer(76, 1); // A pattern that every program knows.
    m_pairs.integer(98, 0); // No seed points.
    end();
}

} // namespace dxf
