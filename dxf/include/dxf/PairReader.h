#pragma once

#include "Error.h"
#include "Limits.h"
#include <Common/FontEngineExport.h>

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dxf {

/// One group of a drawing. The views stay valid until the reader's next call.
struct FONTENGINE_DXF_API Pair {
    int code = 0;
    std::string_view value;   ///< Bytes of the value line without its line ending, blanks kept.
    std::string_view bytes;   ///< Both lines exactly as they stand in the file, line endings included.
    std::uint64_t offset = 0; ///< Of `bytes` in the file.
    std::uint64_t line = 0;   ///< Of the code line, counted from 1.
    bool complete = true;     ///< False when the file ended inside the value line.
    [[nodiscard]] std::string_view trimmedValue() const noexcept; ///< Without blanks at either end.
    [[nodiscard]] bool is(int aCode, std::string_view aValue) const noexcept;
    /// A number, 0 when the value is none; decimal point whatever the locale, "nan" and infinities are none.
    [[nodiscard]] double real() const noexcept;
    /// A whole number, clamped to 64 bits; 0 when the value is none. A fraction is cut.
    [[nodiscard]] std::int64_t integer() const noexcept;
    /// A handle; 0 when the value is no hexadecimal number of at most 16 digits.
    [[nodiscard]] std::uint64_t handle() const noexcept;
};

/// A drawing as a stream of pairs, in one pass. Memory is a fixed block plus the longest line.
///
/// Accepts LF, CRLF and both mixed, blanks around codes, a UTF-8 byte order mark, lines of any length, empty lines
/// after the end mark. One thread at a time.
class FONTENGINE_DXF_API PairReader {
public:
    /// The stream must be open in binary mode, stand at the drawing's first byte, and outlive the reader.
    /// `longestValue`: in bytes.
    explicit PairReader(std::istream& input, std::size_t longestValue = Limits::none);

    /// The next pair; nothing at the end of the file, also when it ends between a code and its value. Throws Error:
    /// Empty, NotADrawing or Binary before the first pair that is no comment has been given, BadGroupCode,
    /// Unreadable or TextLengthLimit later.
    std::optional<Pair> next();

    /// The bytes from here on as they stand in the file, block by block; nothing at the end. For what is copied
    /// without a look: no next() after it.
    std::string_view readRaw();

    /// Number of lines read so far.
    [[nodiscard]] std::uint64_t line() const noexcept { return m_line; }
    /// Number of bytes consumed so far.
    [[nodiscard]] std::uint64_t offset() const noexcept { return m_base + m_position; }
    /// The byte order mark in front of the first pair; empty in nearly every file.
    [[nodiscard]] std::string_view prefix() const noexcept { return m_prefix; }

private:
    struct Line {
        std::string_view text; ///< Without the line ending.
        std::size_t length = 0;
        bool ended = false; ///< There was a line ending.
    };
    bool fill();
    std::optional<Line> findLine(std::size_t from, std::size_t limit);
    void checkFirstBytes();
    void checkFirstPair(const Pair& pair);
    [[noreturn]] void failAtCode(std::string_view line) const;
    [[noreturn]] void failAtValue() const;

    std::istream& m_input;
    std::size_t m_longestValue;
    std::vector<char> m_buffer;
    std::size_t m_position = 0; ///< In the buffer: where the next pair starts.
    std::size_t m_size = 0;     ///< Bytes in the buffer.
    std::uint64_t m_base = 0;   ///< Offset in the file of the buffer's first byte.
    std::uint64_t m_line = 0;
    bool m_opened = false;     ///< The first bytes were looked at.
    bool m_recognised = false; ///< A pair that only a drawing starts with was seen.
    std::string_view m_prefix;
};

} // namespace dxf
