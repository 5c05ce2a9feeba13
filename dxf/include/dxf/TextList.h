#pragma once

#include "TextEntity.h"
#include <Common/FontEngineExport.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string>
#include <unordered_map>
#include <vector>

namespace dxf {

/// Names that many texts share, each kept once.
class FONTENGINE_DXF_API SharedNames {
public:
    /// The number of a name, the same for the same name.
    std::size_t numberOf(const std::wstring& name);
    [[nodiscard]] const std::wstring& operator[](std::size_t number) const { return m_names[number]; }
    [[nodiscard]] std::size_t byteCount() const;

private:
    std::vector<std::wstring> m_names;
    std::unordered_map<std::wstring, std::size_t> m_numbers;
};

/// The texts of a drawing, in the order of the file. Drawings have up to millions of them, most alike: a text takes
/// the bytes of its content and some fifty more, a tenth of a TextEntity, and is given out as a copy.
///
/// Const access from any number of threads.
class FONTENGINE_DXF_API TextList {
public:
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = TextEntity;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = TextEntity;

        Iterator() = default;
        Iterator(const TextList& list, std::size_t index) : m_list(&list), m_index(index) {}
        TextEntity operator*() const { return (*m_list)[m_index]; }
        Iterator& operator++() {
            ++m_index;
            return *this;
        }
        Iterator operator++(int) { return {*m_list, m_index++}; }
        friend bool operator==(const Iterator&, const Iterator&) = default;

    private:
        const TextList* m_list = nullptr;
        std::size_t m_index = 0;
    };

    [[nodiscard]] std::size_t size() const noexcept { return m_size; }
    [[nodiscard]] bool empty() const noexcept { return m_size == 0; }
    [[nodiscard]] Iterator begin() const { return {*this, 0}; }
    [[nodiscard]] Iterator end() const { return {*this, m_size}; }
    /// The text with its `ordinal`.
    [[nodiscard]] TextEntity operator[](std::size_t index) const;
    /// The same. Throws std::out_of_range.
    [[nodiscard]] TextEntity at(std::size_t index) const;
    [[nodiscard]] TextEntity front() const { return (*this)[0]; }

    void push_back(const TextEntity& text);
    /// Gives every text to `change`, in order, and keeps what that makes of it. Without a second list beside the
    /// first: where `change` throws, the texts are lost.
    void change(const std::function<void(TextEntity&)>& change);

    /// Of the memory that the texts take, up to what allocation adds.
    [[nodiscard]] std::size_t byteCount() const;

private:
    /// So many texts that the list of blocks is short, and so few that one more or less at a time is nothing.
    static constexpr std::size_t blockSize = 256;

    struct Block {
        std::string records;
        std::vector<std::size_t> starts; ///< In `records`.
    };

    std::vector<Block> m_blocks;
    SharedNames m_names;
    std::size_t m_size = 0;
};

} // namespace dxf
