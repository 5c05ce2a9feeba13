#pragma once

#include "fonts/HarfBuzz.h"

#include <dwrite_file.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace platform {

/// Where a font file has a table, and its checksum there.
struct TableRecord {
    hb_tag_t tag;
    std::uint32_t checksum;
    std::uint32_t offset;
    std::uint32_t length;
};

/// What a file says at its start that it is.
struct FileKind {
    DWRITE_FONT_FILE_TYPE file = DWRITE_FONT_FILE_TYPE_UNKNOWN;
    DWRITE_FONT_FACE_TYPE face = DWRITE_FONT_FACE_TYPE_UNKNOWN;
    /// 0 for what is no OpenType font.
    std::uint32_t faceCount = 0;
};

/// An open font file. Bytes are read, never mapped: a mapped file that somebody cuts faults whoever looks at it.
class FontFile {
public:
    FontFile(const FontFile&) = delete;
    FontFile& operator=(const FontFile&) = delete;
    virtual ~FontFile() = default;

    std::uint64_t size() const noexcept { return m_size; }
    /// Whether the file is still as it was when it was opened.
    virtual bool isUnchanged() const = 0;
    /// What reading failed with first; S_OK if it never did, or where the reason does not matter.
    virtual HRESULT failure() const noexcept { return S_OK; }

    /// The bytes from `offset` on, as many as there are up to `length`; null if they cannot be read. Throws nothing.
    HbBlobPtr read(std::uint64_t offset, std::uint64_t length) const noexcept;
    /// The tables of a face; none for a face that is not there and for a file that is no OpenType font.
    std::vector<TableRecord> tables(unsigned face) const;
    FileKind kind() const;

protected:
    explicit FontFile(std::uint64_t size) noexcept : m_size(size) {}

    /// Reads the file's first bytes, which hold its directory and often small tables. For the makers of files.
    void readStart();
    /// Copies bytes that lie within the file, one at least.
    virtual bool copyBytes(std::uint64_t offset, std::size_t length, char* to) const noexcept = 0;

private:
    bool copy(std::uint64_t offset, std::size_t length, char* to) const noexcept;
    /// Where a face's directory starts; `size()` for a face that is not there.
    std::uint64_t directoryOf(unsigned face) const;

    const std::uint64_t m_size;
    std::vector<char> m_start;
};

} // namespace platform
