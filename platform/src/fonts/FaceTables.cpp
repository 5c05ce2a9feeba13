#include "fonts/FaceTables.h"

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

} // namespace

std::unique_ptr<FontFile> FontData::reopen() const {
    std::unique_ptr<FontFile> file = FontFile::open(m_path);
    return file != nullptr && file->identity() == m_identity ? std::move(file) : nullptr;
}

hb_blob_t* FontData::keep(const FontFile& file, const TableRecord& record) {
    const std::lock_guard lock(m_guard);
    const auto known = std::find_if(m_kept.begin(), m_kept.end(), [&](const Kept& kept) {
        return kept.offset == record.offset && kept.length == record.length;
    });
    if (known != m_kept.end()) {
        return known->blob.get();
    }
    HbBlobPtr blob = file.read(record.offset, record.length);
    if (!blob || !file.isUnchanged()) {
        return nullptr;
    }
    return m_kept.emplace_back(Kept{record.offset, record.length, std::move(blob)}).blob.get();
}

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
    const std::unique_ptr<FontFile> file = loaded->m_data->reopen();
    if (!file) {
        return loaded;
    }
    for (const TableRecord& record : file->tables(face)) {
        hb_blob_t* const blob = waits(record) ? nullptr : loaded->m_data->keep(*file, record);
        if (blob == nullptr && !waits(record)) {
            loaded->m_tables.clear();
            return loaded;
        }
        loaded->m_tables.push_back({record, HbBlobPtr(blob != nullptr ? hb_blob_reference(blob) : nullptr)});
    }
    if (!file->isUnchanged()) {
        loaded->m_tables.clear();
    }
    return loaded;
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

hb_blob_t* FaceTables::reference(hb_tag_t tag) noexcept {
    const auto found =
        std::find_if(m_tables.begin(), m_tables.end(), [&](const Table& table) { return table.record.tag == tag; });
    if (found == m_tables.end()) {
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
    try {
        const std::unique_ptr<FontFile> file = m_data->reopen();
        if (hb_blob_t* const blob = file ? m_data->keep(*file, table.record) : nullptr) {
            return hb_blob_reference(blob);
        }
    } catch (...) {
        // Without memory the table is missing as well.
    }
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
