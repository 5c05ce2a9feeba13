#pragma once

#include <cmath>
#include <cstdio>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace parity {

// Writes objects within objects; a key given twice is written twice. Text is UTF-8.
class JsonWriter {
public:
    explicit JsonWriter(std::ostream& out) : m_out(out) { m_out << '{'; }

    void beginObject(std::string_view key) {
        writeKey(key);
        m_out << '{';
        m_isFirst.push_back(true);
    }
    void end() {
        m_out << "\n}";
        m_isFirst.pop_back();
    }

    // Infinities and NaN, which JSON has no numbers for, become texts.
    void write(std::string_view key, double value) {
        writeKey(key);
        char text[40];
        std::snprintf(text, sizeof(text), std::isfinite(value) ? "%.9g" : "\"%g\"", value);
        m_out << text;
    }
    void write(std::string_view key, std::string_view text) {
        writeKey(key);
        writeText(text);
    }

private:
    void writeKey(std::string_view key) {
        m_out << (m_isFirst.back() ? "\n" : ",\n");
        m_isFirst.back() = false;
        writeText(key);
        m_out << ": ";
    }
    void writeText(std::string_view text) {
        m_out << '"';
        for (const char c : text) {
            if (c == '"' || c == '\\') {
                m_out << '\\' << c;
            } else if (static_cast<unsigned char>(c) < 0x20) {
                char escaped[8];
                std::snprintf(escaped, sizeof(escaped), "\\u%04x", static_cast<unsigned>(c));
                m_out << escaped;
            } else {
                m_out << c;
            }
        }
        m_out << '"';
    }

    std::ostream& m_out;
    std::vector<bool> m_isFirst{true};
};

} // namespace parity
