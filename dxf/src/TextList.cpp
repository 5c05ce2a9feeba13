#include "TextRecord.h"
#include <dxf/TextList.h>

#include <stdexcept>
#include <utility>

namespace dxf {

std::size_t SharedNames::numberOf(const std::wstring& name) {
    const auto [entry, isNew] = m_numbers.try_emplace(name, m_names.size());
    if (isNew) {
        m_names.push_back(name);
    }
    return entry->second;
}

std::size_t SharedNames::byteCount() const {
    std::size_t count = 0;
    for (const std::wstring& name : m_names) {
        count += 2 * (sizeof(name) + name.capacity() * sizeof(wchar_t)) + sizeof(std::size_t);
    }
    return count;
}

TextEntity TextList::operator[](std::size_t index) const {
    const Block& block = m_blocks[index / blockSize];
    const std::string_view records = block.records;
    TextEntity text = readRecord(records.substr(block.starts[index % blockSize]), m_names);
    text.ordinal = index;
    return text;
}

TextEntity TextList::at(std::size_t index) const {
    if (index >= m_size) {
        throw std::out_of_range("a drawing has no text of that number");
    }
    return (*this)[index];
}

void TextList::push_back(const TextEntity& text) {
    if (m_size == m_blocks.size() * blockSize) {
        if (!m_blocks.empty()) {
            m_blocks.back().records.shrink_to_fit();
        }
        m_blocks.emplace_back().starts.reserve(blockSize);
    }
    Block& block = m_blocks.back();
    const std::size_t start = block.records.size();
    appendRecord(block.records, text, m_names);
    block.starts.push_back(start);
    ++m_size;
}

void TextList::change(const std::function<void(TextEntity&)>& change) {
    TextList changed;
    for (std::size_t i = 0; i < m_size; ++i) {
        TextEntity text = (*this)[i];
        change(text);
        changed.push_back(text);
        if (i % blockSize == blockSize - 1) {
            m_blocks[i / blockSize] = {};
        }
    }
    *this = std::move(changed);
}

std::size_t TextList::byteCount() const {
    std::size_t count = m_names.byteCount() + m_blocks.capacity() * sizeof(Block);
    for (const Block& block : m_blocks) {
        count += block.records.capacity() + block.starts.capacity() * sizeof(std::size_t);
    }
    return count;
}

} // namespace dxf
