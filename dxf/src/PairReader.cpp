#include <dxf/PairReader.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

namespace dxf {
namespace {

constexpr std::size_t blockSize = std::size_t{1} << 16;
/// A group code is a short number. A longer line is none, and need not be read to its end to know it.
constexpr std::size_t maxCodeLine = 256;
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
/// What the first bytes of a binary drawing end with, behind the name of the program that defined them.
constexpr std::string_view binaryMark{"Binary DXF\r\n\x1A\0", 14};
constexpr std::size_t binaryMarkEnd = 22;

std::optional<int> groupCode(std::string_view line) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    while (!line.empty() && isBlank(line.front())) {
        line.remove_prefix(1);
    }
    while (!line.empty() && isBlank(line.back())) {
        line.remove_suffix(1);
    }
    std::int16_t code = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), code);
    if (error != std::errc{} || end != line.data() + line.size()) {
        return std::nullopt;
    }
    return code;
}

/// The line as it can stand in a message.
std::string quoted(std::string_view line) {
    constexpr std::size_t longest = 40;
    std::string result = "\"";
    for (const char c : line.substr(0, longest)) {
        const bool printable = c >= ' ' && c <= '~';
        result += printable ? c : '?';
    }
    return result + (line.size() > longest ? "...\"" : "\"");
}

[[noreturn]] void notADrawing(const std::string& found) {
    throw Error(ErrorKind::NotADrawing, 1,
                "This is not a DXF drawing: " + found + ". Export the drawing as ASCII DXF and try again.");
}

} // namespace

PairReader::PairReader(std::istream& input, std::size_t longestValue) : m_input(input), m_longestValue(longestValue) {}

bool PairReader::fill() {
    if (!m_input.good()) {
        return false;
    }
    if (m_position > 0) {
        std::memmove(m_buffer.data(), m_buffer.data() + m_position, m_size - m_position);
    }
    m_base += m_position;
    m_size -= m_position;
    m_position = 0;
    if (m_buffer.size() - m_size < blockSize) {
        m_buffer.resize(std::max(2 * m_buffer.size(), 2 * blockSize));
    }
    m_input.read(m_buffer.data() + m_size, static_cast<std::streamsize>(blockSize));
    m_size += static_cast<std::size_t>(m_input.gcount());
    if (m_input.bad()) {
        throw Error(ErrorKind::Unreadable, m_line,
                    "The drawing could not be read beyond line " + std::to_string(m_line) +
                        ". Check the disk or the connection and try again.");
    }
    return m_input.gcount() > 0;
}

/// The line that starts `from` bytes behind the position; nothing at the end of the file. A line longer than `limit`
/// is given as far as it was read, without an end. Moves what the buffer holds, and so invalidates views into it.
std::optional<PairReader::Line> PairReader::findLine(std::size_t from, std::size_t limit) {
    std::size_t searched = from;
    for (;;) {
        const char* start = m_buffer.data() + m_position;
        const std::size_t available = m_size - m_position;
        const void* found = searched < available ? std::memchr(start + searched, '\n', available - searched) : nullptr;
        if (found != nullptr) {
            const std::size_t end = static_cast<std::size_t>(static_cast<const char*>(found) - start);
            std::size_t textEnd = end;
            while (textEnd > from && start[textEnd - 1] == '\r') {
                --textEnd;
            }
            return Line{{start + from, textEnd - from}, end + 1 - from, true};
        }
        searched = available;
        if (available > from && available - from > limit) {
            return Line{{start + from, available - from}, available - from, false};
        }
        if (!fill()) {
            start = m_buffer.data() + m_position;
            if (available == from) {
                return std::nullopt;
            }
            return Line{{start + from, available - from}, available - from, false};
        }
    }
}

void PairReader::checkFirstBytes() {
    m_opened = true;
    if (!m_input.good()) {
        throw Error(ErrorKind::Unreadable, 0, "The drawing could not be opened for reading.");
    }
    while (m_size < binaryMarkEnd && fill()) {
    }
    const std::string_view start{m_buffer.data(), m_size};
    if (start.empty()) {
        throw Error(ErrorKind::Empty, 0, "The file is empty. Export the drawing again.");
    }
    if (start.substr(0, binaryMarkEnd).ends_with(binaryMark)) {
        throw Error(ErrorKind::Binary, 1, "This is a binary DXF drawing. Save it as ASCII DXF and try again.");
    }
    if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF")) {
        notADrawing("it is written in UTF-16");
    }
    if (start.starts_with("AC1") || start.starts_with("AC2")) {
        notADrawing("it is the drawing format that DXF is an exchange form of");
    }
    if (start.starts_with(byteOrderMark)) {
        m_prefix = byteOrderMark;
        m_position = byteOrderMark.size();
    }
}

void PairReader::checkFirstPair(const Pair& pair) {
    constexpr int comment = 999;
    if (pair.code == comment) {
        return;
    }
    if (!pair.is(0, "SECTION") && !pair.is(0, "EOF")) {
        notADrawing("it starts with " + quoted(pair.trimmedValue()) + " where a section should start");
    }
    m_recognised = true;
}

void PairReader::failAtCode(std::string_view line) const {
    if (!m_recognised) {
        notADrawing("line " + std::to_string(m_line + 1) + " is " + quoted(line) + ", not a group code");
    }
    throw Error(ErrorKind::BadGroupCode, m_line + 1,
                "Line " + std::to_string(m_line + 1) + " should hold a group code (a whole number) and holds " +
                    quoted(line) + ". The file is damaged there, or a text contains a line break. Export it again.");
}

void PairReader::failAtValue() const {
    throw Error(ErrorKind::TextLengthLimit, m_line + 2,
                "Line " + std::to_string(m_line + 2) + " has more than " + std::to_string(m_longestValue) +
                    " bytes, which is more than the limit of characters for one text allows.");
}

std::string_view PairReader::readRaw() {
    if (m_position == m_size && !fill()) {
        return {};
    }
    const std::string_view block{m_buffer.data() + m_position, m_size - m_position};
    m_position = m_size;
    return block;
}

std::optional<Pair> PairReader::next() {
    if (!m_opened) {
        checkFirstBytes();
    }
    const std::optional<Line> codeLine = findLine(0, maxCodeLine);
    if (!codeLine) {
        return std::nullopt;
    }
    const std::optional<int> code = groupCode(codeLine->text);
    if (!code) {
        // Part of a code line at the file's end is a cut file, not a damaged one.
        if (m_recognised && !codeLine->ended && codeLine->length <= maxCodeLine) {
            return std::nullopt;
        }
        failAtCode(codeLine->text);
    }
    const std::size_t codeLength = codeLine->length;
    const std::optional<Line> valueLine = codeLine->ended ? findLine(codeLength, m_longestValue) : std::nullopt;
    if (!valueLine) {
        return std::nullopt;
    }
    if (valueLine->text.size() > m_longestValue) {
        failAtValue();
    }
    Pair pair;
    pair.code = *code;
    pair.value = valueLine->text;
    pair.bytes = {m_buffer.data() + m_position, codeLength + valueLine->length};
    pair.offset = offset();
    pair.line = m_line + 1;
    pair.complete = valueLine->ended;
    if (!m_recognised) {
        checkFirstPair(pair);
    }
    m_position += pair.bytes.size();
    m_line += 2;
    return pair;
}

} // namespace dxf
