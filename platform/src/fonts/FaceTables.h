#pragma once

#include "fonts/FontFile.h"
#include "fonts/HarfBuzz.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace platform {

/// What the faces of one file share: where it lies, what it was like at first, and the tables that are in memory.
class FontData {
public:
    FontData(std::string path, const FileIdentity& identity) : m_path(std::move(path)), m_identity(identity) {}

    const std::string& path() const noexcept { return m_path; }
    /// The file for another look; null if it is gone or no longer the same.
    std::unique_ptr<FontFile> reopen() const;
    /// A table's bytes, which stay in memory; null if they cannot be read or `file` changes meanwhile.
    hb_blob_t* keep(const FontFile& file, const TableRecord& record);

private:
    struct Kept {
        std::uint32_t offset;
        std::uint32_t length;
        HbBlobPtr blob;
    };

    const std::string m_path;
    const FileIdentity m_identity;
    std::mutex m_guard;
    std::vector<Kept> m_kept;
};

/// The tables of one face, for HarfBuzz. Thread-safe.
class FaceTables {
public:
    /// For a short look at an open file, which outlives the face as `tables` do: each is read when it is asked for.
    static HbFacePtr look(const FontFile& file, const std::vector<TableRecord>& tables);

    /// For good: reads all tables at once, so that nothing done to the file later matters. Only large tables of
    /// outlines wait until somebody wants outlines. No tables if the file is gone or no longer the same.
    static std::shared_ptr<FaceTables> load(std::shared_ptr<FontData> data, unsigned face);
    static HbFacePtr makeFace(const std::shared_ptr<FaceTables>& tables);

    /// Whether a table that waited could not be read any more. What needs outlines is an error from then on.
    bool isTorn() const noexcept { return m_isTorn.load(std::memory_order_acquire); }

private:
    struct Table {
        TableRecord record;
        HbBlobPtr blob;
    };

    hb_blob_t* reference(hb_tag_t tag) noexcept;
    hb_blob_t* readLate(Table& table) noexcept;

    std::shared_ptr<FontData> m_data;
    std::mutex m_guard;
    std::vector<Table> m_tables;
    std::atomic<bool> m_isTorn = false;
};

/// A number that two faces share only if all their tables have the same names, lengths and checksums; 0 without tables.
std::uint64_t fingerprintOf(const std::vector<TableRecord>& tables);

} // namespace platform
