#pragma once

#include "fonts/FontData.h"
#include "fonts/LocalFontFile.h"

#include <optional>
#include <string_view>

namespace platform {

/// What the key of a file on disk says.
struct LocalKey {
    /// As FILETIME counts.
    std::uint64_t writeTime;
    std::string_view path;
};
std::string makeLocalKey(const LocalKey& key);
/// Nothing for what is no such key.
std::optional<LocalKey> readLocalKey(const void* key, std::size_t size);

/// A file on disk, as it was when it was first looked at.
class LocalFontData final : public FontData {
public:
    LocalFontData(std::string path, const FileIdentity& identity)
        : m_path(std::move(path)), m_writeTime(identity.writeTime()), m_identity(identity) {}
    /// As it was when it was changed last at this time.
    LocalFontData(std::string path, std::uint64_t writeTime) : m_path(std::move(path)), m_writeTime(writeTime) {}

    HRESULT open(std::shared_ptr<const FontFile>& file) override;
    IDWriteFontFileLoader& loader() noexcept override;
    const std::string& key() override;
    const std::string& path() const noexcept override { return m_path; }
    bool isSameFile(FontData& other) override;

private:
    std::optional<FileIdentity> identity();

    const std::string m_path;
    const std::uint64_t m_writeTime;
    std::mutex m_identityGuard;
    /// Nothing before the first look.
    std::optional<FileIdentity> m_identity;
    std::once_flag m_keyOnce;
    std::string m_key;
};

} // namespace platform
