#include <dxf/PairWriter.h>

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace dxf {

PairStyle PairStyle::of(std::string_view pairBytes) {
    PairStyle style;
    style.padded = pairBytes.starts_with(' ');
    const std::size_t lineEnd = pairBytes.find('\n');
    if (lineEnd != std::string_view::npos && lineEnd > 0 && pairBytes[lineEnd - 1] == '\r') {
        style.ending = "\r\n";
    }
    return style;
}

std::string handleText(std::uint64_t value, std::size_t digits) {
    constexpr std::string_view figures = "0123456789ABCDEF";
    std::string text;
    for (; value != 0; value >>= 4) {
        text.insert(text.begin(), figures[value & 0xF]);
    }
    if (text.size() < digits) {
        text.insert(0, digits - text.size(), '0');
    }
    return text;
}

PairWriter::PairWriter(std::string& output, PairStyle style) : m_output(output), m_style(std::move(style)) {}

void PairWriter::bytes(int code, std::string_view value) {
    constexpr std::size_t codeColumns = 3;
    const std::string number = std::to_string(code);
    if (m_style.padded && number.size() < codeColumns) {
        m_output.append(codeColumns - number.size(), ' ');
    }
    m_output += number;
    m_output += m_style.ending;
    m_output += value;
    m_output += m_style.ending;
}

void PairWriter::integer(int code, std::int64_t value) {
    bytes(code, std::to_string(value));
}

void PairWriter::real(int code, double value) {
    constexpr std::size_t longest = 32;
    std::array<char, longest> buffer{};
    const double finite = std::isfinite(value) ? value + 0.0 : 0.0; // Adding 0 turns -0 into 0.
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), finite);
    std::string text(buffer.data(), result.ptr);
    if (text.find_first_of(".e") == std::string::npos) {
        text += ".0";
    }
    bytes(code, text);
}

void PairWriter::handle(int code, std::uint64_t value, std::size_t digits) {
    bytes(code, handleText(value, digits));
}

void PairWriter::point(int code, const Point& value) {
    point2d(code, value);
    real(code + 20, value.z);
}

void PairWriter::point2d(int code, const Point& value) {
    real(code, value.x);
    real(code + 10, value.y);
}

void PairWriter::raw(std::string_view pairs) {
    m_output += pairs;
}

} // namespace dxf
