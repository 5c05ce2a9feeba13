#include "fonts/FontFile.h"

#include <boost/endian/conversion.hpp>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <utility>

namespace platform {

namespace {

constexpr std::size_t startSize = 4096;
constexpr std::size_t collectionHeaderSize = 12;
constexpr std::size_t directoryHeaderSize = 12;
constexpr std::size_t recordSize = 16;

std::optional<FileIdentity> identityOf(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return FileIdentity{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

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
    return version == 0x00010000 || version == HB_TAG('O', 'T', 'T', 'O') || version == HB_TAG('t', 'r', 'u', 'e') ||
           version == HB_TAG('t', 'y', 'p', '1');
}

} // namespace

std::unique_ptr<FontFile> FontFile::open(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) {
        return nullptr;
    }
    const std::optional<FileIdentity> identity = identityOf(descriptor);
    if (!identity) {
        ::close(descriptor);
        return nullptr;
    }
    return std::unique_ptr<FontFile>(new FontFile(descriptor, *identity));
}

FontFile::FontFile(int descriptor, const FileIdentity& identity) : m_descriptor(descriptor), m_identity(identity) {
    std::vector<char> start(std::min(startSize, static_cast<std::size_t>(identity.size)));
    if (copy(0, start.size(), start.data())) {
        m_start = std::move(start);
    }
}

FontFile::~FontFile() {
    ::close(m_descriptor);
}

bool FontFile::isUnchanged() const {
    return identityOf(m_descriptor) == m_identity;
}

bool FontFile::copy(std::uint64_t offset, std::size_t length, char* to) const noexcept {
    if (offset + length <= m_start.size()) {
        std::copy_n(m_start.data() + offset, length, to); // Of an empty file neither has an address.
        return true;
    }
    while (length > 0) {
        const ssize_t count = pread(m_descriptor, to, length, static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        const auto done = static_cast<std::size_t>(count);
        to += done;
        length -= done;
        offset += done;
    }
    return true;
}

HbBlobPtr FontFile::read(std::uint64_t offset, std::uint64_t length) const noexcept {
    const auto size = static_cast<std::uint64_t>(m_identity.size);
    const auto count = static_cast<std::size_t>(offset < size ? std::min(length, size - offset) : 0);
    char* const bytes = allocate(count);
    if (bytes == nullptr || !copy(offset, count, bytes)) {
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

std::vector<TableRecord> FontFile::tables(unsigned face) const {
    std::array<char, collectionHeaderSize> header{};
    std::uint64_t start = 0;
    if (!copy(0, header.size(), header.data())) {
        return {};
    }
    if (u32(header.data()) == HB_TAG('t', 't', 'c', 'f')) {
        std::array<char, 4> offset{};
        if (face >= u32(header.data() + 8) ||
            !copy(collectionHeaderSize + std::uint64_t{4} * face, offset.size(), offset.data())) {
            return {};
        }
        start = u32(offset.data());
    } else if (face != 0) {
        return {};
    }
    if (!copy(start, directoryHeaderSize, header.data()) || !isFont(u32(header.data()))) {
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

} // namespace platform
