#include "fonts/LocalFontFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

namespace platform {

namespace {

std::optional<FileIdentity> identityOf(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return FileIdentity{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

} // namespace

std::uint64_t FileIdentity::writeTime() const noexcept {
    // Of the years from 1601 to 1970.
    constexpr std::int64_t secondsBefore = 11'644'473'600;
    constexpr std::int64_t ticksPerSecond = 10'000'000;
    return static_cast<std::uint64_t>((std::int64_t{seconds} + secondsBefore) * ticksPerSecond + nanoseconds / 100);
}

std::unique_ptr<LocalFontFile> LocalFontFile::open(const std::string& path, HRESULT* failure) {
    const auto fail = [failure](HRESULT status) {
        if (failure != nullptr) {
            *failure = status;
        }
        return nullptr;
    };
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) {
        return fail(errno == ENOENT || errno == ENOTDIR ? DWRITE_E_FILENOTFOUND : DWRITE_E_FILEACCESS);
    }
    const std::optional<FileIdentity> identity = identityOf(descriptor);
    if (!identity) {
        ::close(descriptor);
        return fail(DWRITE_E_FILEACCESS);
    }
    return std::unique_ptr<LocalFontFile>(new LocalFontFile(descriptor, *identity));
}

LocalFontFile::LocalFontFile(int descriptor, const FileIdentity& identity)
    : FontFile(static_cast<std::uint64_t>(identity.size)), m_descriptor(descriptor), m_identity(identity) {
    readStart();
}

LocalFontFile::~LocalFontFile() {
    ::close(m_descriptor);
}

bool LocalFontFile::isUnchanged() const {
    return identityOf(m_descriptor) == m_identity;
}

bool LocalFontFile::copyBytes(std::uint64_t offset, std::size_t length, char* to) const noexcept {
    while (length > 0) {
        const ssize_t count = pread(m_descriptor, to, length, static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        const auto done = static_cast<std::size_t>(count);
        to += done;
        length -= done;
        offset += done;
    }
    return true;
}

} // namespace platform
