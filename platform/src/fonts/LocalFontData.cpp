#include "fonts/LocalFontData.h"

#include "fonts/LocalFontFileLoader.h"

#include <cstring>

namespace platform {

std::string makeLocalKey(const LocalKey& key) {
    std::string bytes(sizeof key.writeTime, '\0');
    std::memcpy(bytes.data(), &key.writeTime, sizeof key.writeTime);
    return bytes.append(key.path);
}

std::optional<LocalKey> readLocalKey(const void* key, std::size_t size) {
    LocalKey read{};
    if (key == nullptr || size <= sizeof read.writeTime) {
        return std::nullopt;
    }
    std::memcpy(&read.writeTime, key, sizeof read.writeTime);
    read.path = {static_cast<const char*>(key) + sizeof read.writeTime, size - sizeof read.writeTime};
    return read.path.find('\0') == std::string_view::npos ? std::optional(read) : std::nullopt;
}

HRESULT LocalFontData::open(std::shared_ptr<const FontFile>& file) {
    file = nullptr;
    HRESULT failure = S_OK;
    std::unique_ptr<LocalFontFile> opened = LocalFontFile::open(m_path, &failure);
    if (!opened) {
        return failure;
    }
    const std::lock_guard lock(m_identityGuard);
    if (!m_identity && opened->identity().writeTime() == m_writeTime) {
        m_identity = opened->identity();
    }
    if (opened->identity() != m_identity) {
        return DWRITE_E_FILEACCESS;
    }
    file = std::move(opened);
    return S_OK;
}

IDWriteFontFileLoader& LocalFontData::loader() noexcept {
    return CLocalFontFileLoader::instance();
}

const std::string& LocalFontData::key() {
    std::call_once(m_keyOnce, [this] { m_key = makeLocalKey({m_writeTime, m_path}); });
    return m_key;
}

std::optional<FileIdentity> LocalFontData::identity() {
    const std::lock_guard lock(m_identityGuard);
    return m_identity;
}

bool LocalFontData::isSameFile(FontData& other) {
    if (this == &other) {
        return true;
    }
    auto* const local = dynamic_cast<LocalFontData*>(&other);
    const std::optional<FileIdentity> own = identity();
    // One file may have many names.
    return local != nullptr && own && own == local->identity();
}

} // namespace platform
