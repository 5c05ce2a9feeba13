#pragma once

#include "fonts/HarfBuzz.h"

#include <sys/types.h>

#include <cstdint>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

namespace platform {

/// What tells whether a file is still the one that was looked at before.
struct FileIdentity {
    dev_t device = 0;
    ino_t number = 0;
    off_t size = -1;
    std::time_t seconds = 0;
    long nanoseconds = 0;

    bool operator==(const FileIdentity&) const = default;
};

/// Where a font file has a table, and its checksum there.
struct TableRecord {
    hb_tag_t tag;
    std::uint32_t checksum;
    std::uint32_t offset;
    std::uint32_t length;
};

/// An open font file. Bytes are read, never mapped: a mapped file that somebody cuts faults whoever looks at it.
class FontFile {
public:
    /// Null for what cannot be read or is no regular file: a pipe would wait for its writer.
    static std::unique_ptr<FontFile> open(const std::string& path);

    FontFile(const FontFile&) = delete;
    FontFile& operator=(const FontFile&) = delete;
    ~FontFile();

    const FileIdentity& identity() const noexcept { return m_identity; }
    /// Whether the file is still as it was when it was opened.
    bool isUnchanged() const;

    /// The bytes from `offset` on, as many as there are up to `length`; null if they cannot be read. Throws nothing.
    HbBlobPtr read(std::uint64_t offset, std::uint64_t length) const noexcept;
    /// The tables of a face; none for a face that is not there and for a file that is no OpenType font.
    std::vector<TableRecord> tables(unsigned face) const;

private:
    FontFile(int descriptor, const FileIdentity& identity);

    bool copy(std::uint64_t offset, std::size_t length, char* to) const noexcept;

    int m_descriptor;
    FileIdentity m_identity;
    /// The file's first bytes, which hold its directory and often small tables.
    std::vector<char> m_start;
};

} // namespace platform
