#include <dxf/Error.h>

namespace dxf {

std::string_view errorKindName(ErrorKind kind) {
    switch (kind) {
    case ErrorKind::Empty:
        return "empty";
    case ErrorKind::NotADrawing:
        return "not-a-drawing";
    case ErrorKind::Binary:
        return "binary";
    case ErrorKind::Unreadable:
        return "unreadable";
    case ErrorKind::Truncated:
        return "truncated";
    case ErrorKind::BadGroupCode:
        return "bad-group-code";
    case ErrorKind::Unwritable:
        return "unwritable";
    case ErrorKind::Changed:
        return "changed";
    case ErrorKind::BadRequest:
        return "bad-request";
    case ErrorKind::PlacementLimit:
        return "placement-limit";
    case ErrorKind::DepthLimit:
        return "depth-limit";
    case ErrorKind::TextLengthLimit:
        return "text-length-limit";
    case ErrorKind::PlacedLengthLimit:
        return "placed-length-limit";
    }
    return "unknown";
}

Error::Error(ErrorKind kind, std::uint64_t line, const std::string& message)
    : common::EException(message), m_kind(kind), m_line(line) {}

} // namespace dxf
