#pragma once

#include "fonts/FontFile.h"

#include <sys/types.h>

#include <ctime>
#include <memory>
#include <string>

namespace platform {

/// What tells whether a file is still the one that was looked at before.
struct FileIdentity {
    dev_t device = 0;
    ino_t number = 0;
    off_t size = -1;
    std::time_t seconds = 0;
    long nanoseconds = 0;

    bool operator==(const FileIdentity&) const = default;

    /// The time of the last change as FILETIME counts it.
    std::uint64_t writeTime() const noexcept;
};

/// A file on disk.
class LocalFontFile final : public FontFile {
public:
    /// Null for what cannot be read or is no regular file: a pipe would wait for its writer. `failure` says why.
    static std::unique_ptr<LocalFontFile> open(const std::string& path, HRESULT* failure = nullptr);

    ~LocalFontFile() override;

    const FileIdentity& identity() const noexcept { return m_identity; }
    bool isUnchanged() const override;

protected:
    bool copyBytes(std::uint64_t offset, std::size_t length, char* to) const noexcept override;

private:
    LocalFontFile(int descriptor, const FileIdentity& identity);

    int m_descriptor;
    FileIdentity m_identity;
};

} // namespace platform
