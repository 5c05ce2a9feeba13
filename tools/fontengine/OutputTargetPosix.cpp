#include "OutputTarget.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "InputError.h"

namespace tool {

namespace {

constexpr int mostLinks = 40; // as many as Linux follows

[[noreturn]] void fail(int reason) {
    throw std::system_error(reason, std::generic_category());
}

void require(bool success) {
    if (!success) {
        fail(errno);
    }
}

std::filesystem::path realFolderOf(const std::filesystem::path& path) {
    const std::filesystem::path folder = path.parent_path();
    return std::filesystem::canonical(folder.empty() ? std::filesystem::path(".") : folder);
}

// The number in /proc/PID/fd/NUMBER, where links lead to open files and their
// texts are no paths.
std::optional<int> descriptorOf(const std::filesystem::path& path) {
    const std::filesystem::path folder = path.parent_path();
    const std::string own = "/proc/" + std::to_string(getpid()) + "/";
    if (!folder.string().starts_with(own) || folder.filename() != "fd") {
        return std::nullopt;
    }
    const std::string name = path.filename().string();
    int number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (error != std::errc{} || end != name.data() + name.size()) {
        return std::nullopt;
    }
    return number;
}

void requireAccess(const std::filesystem::path& path, int mode) {
    require(faccessat(AT_FDCWD, path.c_str(), mode, AT_EACCESS) == 0);
}

bool takesFiles(const std::filesystem::path& folder) {
    return faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

void writeAll(int descriptor, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = write(descriptor, bytes, count);
        if (written >= 0) {
            bytes += written;
            count -= static_cast<std::size_t>(written);
        } else if (errno == EAGAIN) {
            pollfd waiting{.fd = descriptor, .events = POLLOUT, .revents = 0};
            poll(&waiting, 1, -1);
        } else {
            require(errno == EINTR);
        }
    }
}

} // namespace

// By hand, since the last link may lead to a file that is to be made.
std::filesystem::path followLinks(const std::filesystem::path& given) {
    std::filesystem::path path = given;
    for (int links = 0; links < mostLinks; ++links) {
        path = realFolderOf(path) / path.filename();
        if (descriptorOf(path) || !std::filesystem::is_symlink(std::filesystem::symlink_status(path))) {
            return path;
        }
        path = path.parent_path() / std::filesystem::read_symlink(path);
    }
    fail(ELOOP);
}

OutputTarget resolveOutput(const std::string& path) {
    if (path == standardStreamName) {
        return {.path = path, .keepsItsFile = true, .descriptor = STDOUT_FILENO};
    }
    if (path.empty()) {
        fail(ENOENT);
    }
    OutputTarget target{.path = followLinks(path), .keepsItsFile = false, .descriptor = {}};
    if (const auto descriptor = descriptorOf(target.path)) {
        require(fcntl(*descriptor, F_GETFL) != -1);
        return {.path = target.path, .keepsItsFile = true, .descriptor = descriptor};
    }
    struct stat found {};
    if (stat(target.path.c_str(), &found) != 0) {
        require(errno == ENOENT);
        if (target.path.filename().empty()) {
            fail(EISDIR);
        }
        requireAccess(target.path.parent_path(), W_OK | X_OK);
        return target;
    }
    if (S_ISDIR(found.st_mode)) {
        fail(EISDIR);
    }
    requireAccess(target.path, W_OK);
    target.keepsItsFile = !S_ISREG(found.st_mode) || !takesFiles(target.path.parent_path());
    return target;
}

FileHandle openForWriting(const OutputTarget& target) {
    // Emptied when the bytes are there, not before.
    const int descriptor = target.descriptor ? fcntl(*target.descriptor, F_DUPFD_CLOEXEC, 0)
                                             : open(target.path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    require(descriptor >= 0);
    FileHandle file(fdopen(descriptor, "wb"));
    if (!file) {
        const int reason = errno;
        close(descriptor);
        fail(reason);
    }
    return file;
}

void copyBytes(std::FILE* source, const OutputTarget& target, std::FILE* opened) {
    const int descriptor = fileno(opened);
    struct stat found {};
    require(fstat(descriptor, &found) == 0);
    require(seekTo(source, 0) == 0);
    // What another program has opened may hold something already.
    if (!target.descriptor && S_ISREG(found.st_mode)) {
        require(ftruncate(descriptor, 0) == 0);
    }
    std::array<char, 65536> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), source)) {
        writeAll(descriptor, block.data(), count);
    }
    require(std::ferror(source) == 0);
    bringToDisk(opened);
}

void bringToDisk(std::FILE* file) {
    require(std::fflush(file) == 0);
    // Pipes, and some file systems, know no such order.
    require(fsync(fileno(file)) == 0 || errno == EINVAL || errno == ENOTSUP || errno == EROFS);
}

int seekTo(std::FILE* file, long long position) {
    return fseeko(file, static_cast<off_t>(position), SEEK_SET);
}

} // namespace tool
