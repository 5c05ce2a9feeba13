#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

namespace fuzz {

/// The bytes of one input, taken from the front as values. Past the end everything is zero, so that every input means
/// something.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    [[nodiscard]] bool atEnd() const { return m_size == 0; }

    template <class Value>
    Value take() {
        static_assert(std::is_trivially_copyable_v<Value>);
        Value value{};
        const std::size_t count = std::min(sizeof(Value), m_size);
        std::memcpy(&value, m_data, count);
        skip(count);
        return value;
    }

    /// A number below `limit`.
    std::size_t below(std::size_t limit) { return take<std::uint8_t>() % limit; }

    /// UTF-16 units, at most 255 of them.
    std::wstring text() {
        std::wstring text;
        for (std::size_t left = take<std::uint8_t>(); left > 0 && !atEnd(); --left) {
            text += static_cast<wchar_t>(take<std::uint16_t>());
        }
        return text;
    }

    /// All bytes that are left.
    std::string rest() {
        std::string bytes(reinterpret_cast<const char*>(m_data), m_size);
        skip(m_size);
        return bytes;
    }

private:
    void skip(std::size_t count) {
        m_data += count;
        m_size -= count;
    }

    const std::uint8_t* m_data;
    std::size_t m_size;
};

/// Ends the program when what must hold does not, so that the input is kept.
inline void require(bool holds) {
    if (!holds) {
        __builtin_trap();
    }
}

} // namespace fuzz
