#pragma once

#include "Geometry.h"
#include <Common/FontEngineExport.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace dxf {

/// How a file writes its lines; new pairs look like those around them.
struct FONTENGINE_DXF_API PairStyle {
    std::string ending = "\n";
    bool padded = true; ///< Codes stand right-aligned in three columns.

    /// As the pair with these bytes is written.
    static PairStyle of(std::string_view pairBytes);
};

/// Appends pairs to a string that the caller owns and that must outlive the writer.
class FONTENGINE_DXF_API PairWriter {
public:
    PairWriter(std::string& output, PairStyle style);

    /// `value` as it is; it must hold no line break.
    void bytes(int code, std::string_view value);
    void integer(int code, std::int64_t value);
    /// The shortest form that reads back to the same number, always with a decimal point or an exponent; what is not
    /// finite is written as 0.
    void real(int code, double value);
    /// Hexadecimal, at least `digits` wide.
    void handle(int code, std::uint64_t value, std::size_t digits = 1);
    /// Groups `code`, `code + 10` and `code + 20`.
    void point(int code, const Point& value);
    /// Groups `code` and `code + 10`.
    void point2d(int code, const Point& value);
    /// Pairs that are complete already.
    void raw(std::string_view pairs);

private:
    std::string& m_output;
    PairStyle m_style;
};

/// `value` in hexadecimal, upper case, with leading zeros up to `digits`.
FONTENGINE_DXF_API std::string handleText(std::uint64_t value, std::size_t digits = 1);

} // namespace dxf
