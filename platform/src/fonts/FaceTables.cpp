#include "fonts/FaceTables.h"

#include "com/ComObject.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

/// Tables of outlines from this size on are read when somebody wants outlines. Chinese, Japanese and Korean fonts have
/// such; to lay their text out takes a tenth of the file.
constexpr std::uint32_t largeTable = 1U << 20;

bool waits(const TableRecord& record) {
    constexpr std::array<hb_tag_t, 7> ofOutlines = {
        HB_TAG('g', 'l', 'y', 'f'), HB_TAG('g', 'v', 'a', 'r'), HB_TAG('C', 'F', 'F', ' '), HB_TAG('C', 'F', 'F', '2'),
        HB_TAG('C', 'B', 'D', 'T'), HB_TAG('s', 'b', 'i', 'x'), HB_TAG('S', 'V', 'G', ' ')};
    return record.length >= largeTable &&
           std::find(ofOutlines.begin(), ofOutlines.end(), record.tag) != ofOutlines.end();
}

/// An open file and where it has a face's tables.
struct Look {
    const FontFile& file;
    const std::vector<TableRecord>& tables;
};

/// What reading of `file` failed with.
HRESULT failureOf(const FontFile& file) {
    return FAILED(file.failure()) ? file.failure() : DWRITE_E_FILEACCESS;
}

} // namespace

HbFacePtr FaceTables::look(const FontFile& file, const std::vector<TableRecord>& tables) {
    auto look = std::make_unique<Look>(Look{file, tables});
    return HbFacePtr(hb_face_create_for_tables(
        [](hb_face_t*, hb_tag_t tag, void* data) -> hb_blob_t* {
            const Look& from = *static_cast<const Look*>(data);
            for (const TableRecord& record : from.tables) {
                if (record.tag == tag) {
                    return from.file.read(record.offset, record.length).release();
                }
            }
            return nullptr;
        },
        look.release(), [](void* owned) { delete static_cast<Look*>(owned); }));
}

std::shared_ptr<FaceTables> FaceTables::load(std::shared_ptr<FontData> data, unsigned face) {
    auto loaded = std::make_shared<FaceTables>();
    loaded->m_data = std::move(data);
    loaded->m_failure = loaded->readTables(face);
    if (FAILED(loaded->failure())) {
        loaded->m_tables.clear();
    }
    return loaded;
}

HRESULT FaceTables::readTables(unsigned face) {
    std::shared_ptr<const FontFile> file;
    if (const HRESULT result = m_data->open(file); FAILED(result)) {
        return result;
    }
    for (const TableRecord& record : file->tables(face)) {
        hb_blob_t* const blob = waits(record) ? nullptr : m_data->keep(*file, record);
        if (blob == nullptr && !waits(record)) {
            return failureOf(*file);
        }
        m_tables.push_back({record, HbBlobPtr(blob != nullptr ? hb_blob_reference(blob) : nullptr)});
    }
    return FAILED(file->failure()) || !file->isUnchanged() ? failureOf(*file) : S_OK;
}

HbFacePtr FaceTables::makeFace(const std::shared_ptr<FaceTables>& tables) {
    // HarfBuzz's objects may outlive whoever made them.
    return HbFacePtr(hb_face_create_for_tables(
        [](hb_face_t*, hb_tag_t tag, void* data) -> hb_blob_t* {
            return (*static_cast<std::shared_ptr<FaceTables>*>(data))->reference(tag);
        },
        new std::shared_ptr<FaceTables>(tables),
        [](void* owned) { delete static_cast<std::shared_ptr<FaceTables>*>(owned); }));
}

FaceTables::Table* FaceTables::find(hb_tag_t tag) noexcept {
    const auto found =
        std::find_if(m_tables.begin(), m_tables.end(), [&](const Table& table) { return table.record.tag == tag; });
    return found != m_tables.end() ? &*found : nullptr;
}

HbBlobPtr FaceTables::table(hb_tag_t tag) {
    const bool exists = find(tag) != nullptr;
    HbBlobPtr blob(exists ? reference(tag) : nullptr);
    if (!blob && FAILED(failure()) && (exists || m_tables.empty())) {
        throw StatusError(failure(), "a font's table cannot be read");
    }
    return blob;
}

hb_blob_t* FaceTables::reference(hb_tag_t tag) noexcept {
    Table* const found = find(tag);
    if (found == nullptr) {
        return nullptr;
    }
    if (!waits(found->record)) {
        return hb_blob_reference(found->blob.get());
    }
    const std::lock_guard lock(m_guard);
    if (!found->blob) {
        found->blob.reset(readLate(*found));
    }
    return found->blob ? hb_blob_reference(found->blob.get()) : nullptr;
}

hb_blob_t* FaceTables::readLate(Table& table) noexcept {
    HRESULT failure = E_FAIL;
    try {
        std::shared_ptr<const FontFile> file;
        failure = m_data->open(file);
        if (hb_blob_t* const blob = file ? m_data->keep(*file, table.record) : nullptr) {
            return hb_blob_reference(blob);
        }
        failure = file ? failureOf(*file) : failure;
    } catch (...) {
        // Without memory the table is missing as well.
    }
    m_failure.store(failure, std::memory_order_release);
    m_isTorn.store(true, std::memory_order_release);
    return nullptr;
}

std::uint64_t fingerprintOf(const std::vector<TableRecord>& tables) {
    if (tables.empty()) {
        return 0;
    }
    std::uint64_t hash = 0xCBF29CE484222325u; // FNV-1a
    for (const TableRecord& table : tables) {
        for (const std::uint32_t value : {table.tag, table.length, table.checksum}) {
            hash = (hash ^ value) * 0x100000001B3u;
        }
    }
    return hash;
}

} // namespace platform
