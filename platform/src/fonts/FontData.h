#pragma once

#include "com/Reference.h"
#include "fonts/FontFile.h"

#include <dwrite_file.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace platform {

/// What the faces of one file share: how to get at its bytes, and the tables that are in memory. Thread-safe.
class FontData {
public:
    FontData(const FontData&) = delete;
    FontData& operator=(const FontData&) = delete;
    virtual ~FontData() = default;

    /// The file for a look; null, with what says why, if it is gone or no longer the same.
    virtual HRESULT open(std::shared_ptr<const FontFile>& file) = 0;
    /// A table's bytes, which stay in memory; null if they cannot be read or `file` changes meanwhile.
    hb_blob_t* keep(const FontFile& file, const TableRecord& record);

    /// The file as others name it.
    virtual IDWriteFontFileLoader& loader() noexcept = 0;
    /// Stays as long as this object.
    virtual const std::string& key() = 0;
    /// Where the file lies on disk; empty if it is a host's.
    virtual const std::string& path() const noexcept = 0;

    /// Whether both stand for one file.
    virtual bool isSameFile(FontData& other) = 0;

protected:
    FontData() = default;

private:
    struct Kept {
        std::uint32_t offset;
        std::uint32_t length;
        HbBlobPtr blob;
    };

    std::mutex m_guard;
    std::vector<Kept> m_kept;
};

/// The data of the file that a loader knows by `key`. E_INVALIDARG where the key is none of the loader's.
HRESULT makeFontData(IDWriteFontFileLoader& loader, std::string key, std::shared_ptr<FontData>& data);

} // namespace platform
