#include "fonts/FontData.h"

#include "fonts/HostFontData.h"
#include "fonts/LocalFontData.h"
#include "fonts/LocalFontFileLoader.h"

#include <algorithm>

namespace platform {

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

HRESULT makeFontData(IDWriteFontFileLoader& loader, std::string key, std::shared_ptr<FontData>& data) {
    if (&loader != &CLocalFontFileLoader::instance()) {
        data = std::make_shared<HostFontData>(loader, std::move(key));
        return S_OK;
    }
    const std::optional<LocalKey> local = readLocalKey(key.data(), key.size());
    data = local ? std::make_shared<LocalFontData>(std::string(local->path), local->writeTime) : nullptr;
    return data ? S_OK : E_INVALIDARG;
}

} // namespace platform
