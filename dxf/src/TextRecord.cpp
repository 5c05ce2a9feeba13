#include "TextRecord.h"

#include <array>
#include <concepts>
#include <cstring>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace dxf {
namespace {

/// Every field of a text once, in the order of its record. Names that texts share are told apart from strings that
/// are a text's own.
template <typename Visitor>
void visitFields(Visitor& visit) {
    visit(&TextEntity::kind);
    visit(&TextEntity::content);
    visit(&TextEntity::replacedBytes);
    visit(&TextEntity::offset);
    visit(&TextEntity::line);
    visit(&TextEntity::handle);
    visit(&TextEntity::owner);
    visit.name(&TextEntity::layer);
    visit.name(&TextEntity::style);
    visit(&TextEntity::styleHandle);
    visit(&TextEntity::color);
    visit(&TextEntity::trueColor);
    visit(&TextEntity::invisible);
    visit(&TextEntity::paperSpace);
    visit.name(&TextEntity::layout);
    visit.name(&TextEntity::block);
    visit(&TextEntity::insertion);
    visit(&TextEntity::extrusion);
    visit(&TextEntity::height);
    visit(&TextEntity::rotation);
    visit(&TextEntity::direction);
    visit(&TextEntity::attachment);
    visit(&TextEntity::width);
    visit(&TextEntity::definedHeight);
    visit(&TextEntity::measuredWidth);
    visit(&TextEntity::measuredHeight);
    visit(&TextEntity::lineSpacingStyle);
    visit(&TextEntity::lineSpacingFactor);
    visit(&TextEntity::drawingDirection);
    visit(&TextEntity::columns);
    visit(&TextEntity::alignmentPoint);
    visit(&TextEntity::horizontal);
    visit(&TextEntity::vertical);
    visit(&TextEntity::widthFactor);
    visit(&TextEntity::oblique);
    visit(&TextEntity::backward);
    visit(&TextEntity::upsideDown);
    visit(&TextEntity::multiLine);
    visit(&TextEntity::constant);
    visit(&TextEntity::tag);
    visit(&TextEntity::prompt);
    visit.name(&TextEntity::graphicsBlock);
    visit.name(&TextEntity::dimStyle);
    visit(&TextEntity::measurement);
    visit(&TextEntity::row);
    visit(&TextEntity::column);
}

/// In a function, since a host's own global may read a drawing before those of this file are made.
const TextEntity& defaults() {
    static const TextEntity text;
    return text;
}

constexpr unsigned bitsPerByte = 7; ///< Of a number; the eighth says that more follow.
constexpr unsigned moreFollow = 0x80;

class RecordWriter {
public:
    RecordWriter(std::string& output, const TextEntity& text, SharedNames& names)
        : m_output(output), m_text(text), m_names(names), m_start(output.size()) {
        m_output.append(sizeof(m_present), '\0');
        visitFields(*this);
        std::memcpy(m_output.data() + m_start, &m_present, sizeof(m_present));
    }

    template <typename Value>
    void operator()(Value TextEntity::*field) {
        if (note(field)) {
            put(m_text.*field);
        }
    }
    void name(std::wstring TextEntity::*field) {
        if (note(field)) {
            put(std::uint64_t{m_names.numberOf(m_text.*field)});
        }
    }

private:
    template <typename Value>
    bool note(Value TextEntity::*field) {
        const bool differs = !(m_text.*field == defaults().*field);
        m_present |= std::uint64_t{differs} << m_bit++;
        return differs;
    }

    void put(bool) {} // That it differs says it all.
    void put(std::uint64_t value) {
        for (; value >= moreFollow; value >>= bitsPerByte) {
            m_output += static_cast<char>(value | moreFollow);
        }
        m_output += static_cast<char>(value);
    }
    template <std::integral Value>
    void put(Value value) {
        put(static_cast<std::uint64_t>(value));
    }
    template <typename Value>
    requires std::is_enum_v<Value>
    void put(Value value) { put(static_cast<std::uint64_t>(value)); }
    void put(double value) {
        std::array<char, sizeof(value)> bytes;
        std::memcpy(bytes.data(), &value, sizeof(value));
        m_output.append(bytes.data(), bytes.size());
    }
    void put(const Point& point) {
        put(point.x);
        put(point.y);
        put(point.z);
    }
    template <typename Value>
    void put(const std::optional<Value>& value) {
        put(*value); // None is the default.
    }
    void put(const std::wstring& text) {
        put(std::uint64_t{text.size()});
        for (const wchar_t unit : text) {
            put(static_cast<std::uint64_t>(unit));
        }
    }
    template <typename Value>
    void put(const std::vector<Value>& values) {
        put(std::uint64_t{values.size()});
        for (const Value& value : values) {
            put(value);
        }
    }
    void put(const Columns& columns) {
        put(columns.kind);
        put(columns.count);
        put(columns.width);
        put(columns.gutter);
        put(std::uint64_t{columns.autoHeight});
        put(std::uint64_t{columns.reversed});
        put(columns.definedHeight);
        put(columns.heights);
        put(columns.linkedColumns);
    }

    std::string& m_output;
    const TextEntity& m_text;
    SharedNames& m_names;
    std::size_t m_start;
    std::uint64_t m_present = 0;
    unsigned m_bit = 0;
};

class RecordReader {
public:
    RecordReader(std::string_view record, const SharedNames& names) : m_record(record), m_names(names) {
        std::memcpy(&m_present, m_record.data(), sizeof(m_present));
        m_record.remove_prefix(sizeof(m_present));
        visitFields(*this);
    }

    TextEntity takeText() { return std::move(m_text); }

    template <typename Value>
    void operator()(Value TextEntity::*field) {
        if (next()) {
            get(m_text.*field);
        }
    }
    void name(std::wstring TextEntity::*field) {
        if (next()) {
            m_text.*field = m_names[number()];
        }
    }

private:
    bool next() { return (m_present >> m_bit++ & 1U) != 0; }

    std::uint64_t number() {
        std::uint64_t value = 0;
        unsigned shift = 0;
        for (;;) {
            const auto byte = static_cast<unsigned char>(m_record.front());
            m_record.remove_prefix(1);
            value |= static_cast<std::uint64_t>(byte & ~moreFollow) << shift;
            if ((byte & moreFollow) == 0) {
                return value;
            }
            shift += bitsPerByte;
        }
    }

    static void get(bool& value) { value = !value; }
    template <typename Value>
    requires(std::integral<Value> || std::is_enum_v<Value>) void get(Value& value) {
        value = static_cast<Value>(number());
    }
    void get(double& value) {
        std::memcpy(&value, m_record.data(), sizeof(value));
        m_record.remove_prefix(sizeof(value));
    }
    void get(Point& point) {
        get(point.x);
        get(point.y);
        get(point.z);
    }
    template <typename Value>
    void get(std::optional<Value>& value) {
        get(value.emplace());
    }
    void get(std::wstring& text) {
        text.resize(number());
        for (wchar_t& unit : text) {
            unit = static_cast<wchar_t>(number());
        }
    }
    template <typename Value>
    void get(std::vector<Value>& values) {
        values.resize(number());
        for (Value& value : values) {
            get(value);
        }
    }
    void get(Columns& columns) {
        get(columns.kind);
        get(columns.count);
        get(columns.width);
        get(columns.gutter);
        columns.autoHeight = number() != 0;
        columns.reversed = number() != 0;
        get(columns.definedHeight);
        get(columns.heights);
        get(columns.linkedColumns);
    }

    std::string_view m_record;
    const SharedNames& m_names;
    TextEntity m_text;
    std::uint64_t m_present = 0;
    unsigned m_bit = 0;
};

} // namespace

void appendRecord(std::string& output, const TextEntity& text, SharedNames& names) {
    RecordWriter(output, text, names);
}

TextEntity readRecord(std::string_view record, const SharedNames& names) {
    return RecordReader(record, names).takeText();
}

} // namespace dxf
