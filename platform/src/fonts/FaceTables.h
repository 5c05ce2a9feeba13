#pragma once

#include "fonts/FontData.h"
#include "fonts/HarfBuzz.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace platform {

/// The tables of one face, for HarfBuzz. Thread-safe.
class FaceTables {
public:
    /// For a short look at an open file, which outlives the face as `tables` do: each is read when it is asked for.
    static HbFacePtr look(const FontFile& file, const std::vector<TableRecord>& tables);

    /// For good: reads all tables at once, so that nothing done to the file later matters. Only large tables of
    /// outlines wait until somebody wants outlines. No tables if the file is gone or no longer the same.
    static std::shared_ptr<FaceTables> load(std::shared_ptr<FontData> data, unsigned face);
    static HbFacePtr makeFace(const std::shared_ptr<FaceTables>& tables);

    /// A table; null if the face has none. Throws where it cannot be read any more.
    HbBlobPtr table(hb_tag_t tag);

    /// Whether a table that waited could not be read any more. What needs outlines is an error from then on.
    bool isTorn() const noexcept { return m_isTorn.load(std::memory_order_acquire); }
    /// What reading failed with last; S_OK if it never did.
    HRESULT failure() const noexcept { return m_failure.load(std::memory_order_acquire); }

private:
    struct Table {
        TableRecord record;
        HbBlobPtr blob;
    };

    hb_blob_t* reference(hb_tag_t tag) noexcept;
    hb_blob_t* readLate(Table& table) noexcept;
    Table* find(hb_tag_t tag) noexcept;
    /// Reads what does not wait.
    HRESULT readTables(unsigned face);

    std::shared_ptr<FontData> m_data;
    std::mutex m_guard;
    std::vector<Table> m_tables;
    std::atomic<bool> m_isTorn = false;
    std::atomic<HRESULT> m_failure = S_OK;
};

/// A number that two faces share only if all their tables have the same names, lengths and checksums; 0 without tables.
std::uint64_t fingerprintOf(const std::vector<TableRecord>& tables);

} // namespace platform
