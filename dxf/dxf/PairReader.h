#pragma once

#include <dxf/Error.h>

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dxf {

/// One group of a drawing. The views stay valid until the reader's next call.
struct Pair {
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
class PairReader {
public:
    /// The stream must be open in binary mode, stand at the drawing's first byte, and outlive the reader.
    explicit PairReader(std::istream& input);

    /// The next pair; nothing at the end of the file. Throws Error: Empty, NotADrawing or Binary at the first call,
    /// BadGroupCode or Unreadable later. A file that ends between a code and its value ends there: see danglingCode().
    std::optional<Pair> next();

    /// True when the file ended after a group code without its value.
    [[nodiscard]] bool danglingCode() const noexcept { return m_danglingCode; }
    /// Number of lines read so far.
    [[nodiscard]] std::uint64_t line() const noexcept { return m_line; }
    /// Number of bytes consumed so far.
    [[nodiscard]] std::uint64_t offset() const noexcept { return m_base + m_position; }
    /// The bytes in front of the first pair (a byte order mark), and the bytes behind the last one.
    [[nodiscard]] std::string_view prefix() const noexcept { return m_prefix; }
    /// What stands behind the end of the last pair: a dangling code line. Valid once next() gave nothing.
    [[nodiscard]] std::string_view rest() const noexcept { return m_rest; }

private:
    struct Line {
        std::size_t begin = 0;
        std::size_t end = 0;  ///< Without the line ending.
        std::size_t next = 0; ///< Behind the line ending.
        bool ended = false;   ///< There was a line ending.
    };
    bool fill();
    bool readLine(std::size_t from, Line& line);
    void checkBeginning();
    [[noreturn]] void failAtBeginning(std::string_view firstLine) const;

    std::istream& m_input;
    std::vector<char> m_buffer;
    std::size_t m_position = 0; ///< In the buffer: start of the next pair.
    std::size_t m_size = 0;     ///< Bytes in the buffer.
    std::uint64_t m_base = 0;   ///< File offset of the buffer's first byte.
    std::uint64_t m_line = 0;
    bool m_started = false;
    bool m_danglingCode = false;
    std::string m_prefix;
    std::string m_rest;
};

} // namespace dxf
