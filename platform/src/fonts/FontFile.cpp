#include "fonts/FontFile.h"

#include <boost/endian/conversion.hpp>

#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace platform {

namespace {

constexpr std::size_t startSize = 4096;
constexpr std::size_t collectionHeaderSize = 12;
constexpr std::size_t directoryHeaderSize = 12;
constexpr std::size_t recordSize = 16;

constexpr std::uint32_t collectionTag = HB_TAG('t', 't', 'c', 'f');
constexpr std::uint32_t cffTag = HB_TAG('O', 'T', 'T', 'O');

std::uint32_t u32(const char* at) {
    return boost::endian::load_big_u32(reinterpret_cast<const unsigned char*>(at));
}

std::uint16_t u16(const char* at) {
    return boost::endian::load_big_u16(reinterpret_cast<const unsigned char*>(at));
}

/// Memory for `std::free`; null if there is none.
char* allocate(std::size_t size) {
    constexpr std::size_t hugePage = std::size_t{2} << 20;
    if (size < hugePage) {
        return static_cast<char*>(std::malloc(std::max<std::size_t>(size, 1)));
    }
    // To get outlines of 16 MB page by page takes longer than to read them.
    const std::size_t pages = (size + hugePage - 1) / hugePage * hugePage;
    void* const memory = std::aligned_alloc(hugePage, pages);
    if (memory != nullptr) {
        madvise(memory, pages, MADV_HUGEPAGE);
    }
    return static_cast<char*>(memory);
}

bool isFont(std::uint32_t version) {
    return version == 0x00010000 || version == cffTag || version == HB_TAG('t', 'r', 'u', 'e') ||
           version == HB_TAG('t', 'y', 'p', '1');
}

} // namespace

void FontFile::readStart() {
    std::vector<char> start(static_cast<std::size_t>(std::min<std::uint64_t>(startSize, m_size)));
    if (!start.empty() && copyBytes(0, start.size(), start.data())) {
        m_start = std::move(start);
    }
}

bool FontFile::copy(std::uint64_t offset, std::size_t length, char* to) const noexcept {
    if (offset > m_size || length > m_size - offset) {
        return false;
    }
    if (offset + length <= m_start.size()) {
        std::copy_n(m_start.data() + offset, length, to); // Of an empty file neither has an address.
        return true;
    }
    return length == 0 || copyBytes(offset, length, to);
}

HbBlobPtr FontFile::read(std::uint64_t offset, std::uint64_t length) const noexcept {
    const auto count = static_cast<std::size_t>(offset < m_size ? std::min(length, m_size - offset) : 0);
    char* const bytes = allocate(count);
    if (bytes == nullptr || !copy(std::min(offset, m_size), count, bytes)) {
        std::free(bytes);
        return nullptr;
    }
    // HarfBuzz frees the bytes too where it cannot make the blob.
    HbBlobPtr blob(hb_blob_create_or_fail(bytes, static_cast<unsigned>(count), HB_MEMORY_MODE_READONLY, bytes,
                                          [](void* owned) { std::free(owned); }));
    if (blob) {
        hb_blob_make_immutable(blob.get());
    }
    return blob;
}

std::uint64_t FontFile::directoryOf(unsigned face) const {
    std::array<char, collectionHeaderSize> header{};
    if (!copy(0, header.size(), header.data())) {
        return m_size;
    }
    if (u32(header.data()) != collectionTag) {
        return face == 0 ? 0 : m_size;
    }
    std::array<char, 4> offset{};
    if (face >= u32(header.data() + 8) ||
        !copy(collectionHeaderSize + std::uint64_t{4} * face, offset.size(), offset.data())) {
        return m_size;
    }
    return u32(offset.data());
}

std::vector<TableRecord> FontFile::tables(unsigned face) const {
    const std::uint64_t start = directoryOf(face);
    std::array<char, directoryHeaderSize> header{};
    if (!copy(start, header.size(), header.data()) || !isFont(u32(header.data()))) {
        return {};
    }
    std::vector<char> bytes(u16(header.data() + 4) * recordSize);
    if (!copy(start + directoryHeaderSize, bytes.size(), bytes.data())) {
        return {};
    }
    std::vector<TableRecord> records;
    for (std::size_t at = 0; at < bytes.size(); at += recordSize) {
        const char* const record = bytes.data() + at;
        records.push_back({u32(record), u32(record + 4), u32(record + 8), u32(record + 12)});
    }
    return records;
}

FileKind FontFile::kind() const {
    std::array<char, collectionHeaderSize> header{};
    if (!copy(0, header.size(), header.data())) {
        return {};
    }
    const std::uint32_t version = u32(header.data());
    if (version == collectionTag) {
        // Each face has an offset there, whatever number the file states.
        const std::uint64_t room = (m_size - collectionHeaderSize) / 4;
        const auto count = static_cast<std::uint32_t>(std::min<std::uint64_t>(u32(header.data() + 8), room));
        return count == 0 ? FileKind()
                          : FileKind{DWRITE_FONT_FILE_TYPE_OPENTYPE_COLLECTION,
                                     DWRITE_FONT_FACE_TYPE_OPENTYPE_COLLECTION, count};
    }
    if (!isFont(version)) {
        return {};
    }
    return version == cffTag ? FileKind{DWRITE_FONT_FILE_TYPE_CFF, DWRITE_FONT_FACE_TYPE_CFF, 1}
                             : FileKind{DWRITE_FONT_FILE_TYPE_TRUETYPE, DWRITE_FONT_FACE_TYPE_TRUETYPE, 1};
}

} // namespace platform
