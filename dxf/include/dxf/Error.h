#pragma once

#include <Common/Exception.h>
#include <Common/FontEngineExport.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace dxf {

// X11 makes `BadRequest` a macro; a host that includes it gets it back.
#pragma push_macro("BadRequest")
#undef BadRequest
/// What is wrong with a file or a request.
enum class ErrorKind : std::uint8_t {
    Empty,        ///< No bytes at all.
    NotADrawing,  ///< Text or data that does not start as a drawing does.
    Binary,       ///< A drawing in a binary form.
    Unreadable,   ///< The stream failed while it was read.
    Truncated,    ///< The file ends before its end mark.
    BadGroupCode, ///< A line that should hold a group code does not.
    Unwritable,   ///< The output stream failed.
    Changed,      ///< A second reading met other bytes than the first.
    BadRequest,   ///< The caller asked for an entity that this kind of drawing cannot hold.
    // Beyond one of the Limits.
    PlacementLimit,
    DepthLimit,
    TextLengthLimit,
    PlacedLengthLimit,
};
#pragma pop_macro("BadRequest")

/// Stable name for files and filters, such as "truncated".
FONTENGINE_DXF_API std::string_view errorKindName(ErrorKind kind);

/// A failure with its place. `what()` is a sentence for the person who has to act on it; it names the line.
class FONTENGINE_DXF_API Error : public common::EException {
public:
    Error(ErrorKind kind, std::uint64_t line, const std::string& message);

    [[nodiscard]] ErrorKind kind() const noexcept { return m_kind; }
    /// Counted from 1; 0 when no line is to blame.
    [[nodiscard]] std::uint64_t line() const noexcept { return m_line; }

private:
    ErrorKind m_kind;
    std::uint64_t m_line;
};

} // namespace dxf
