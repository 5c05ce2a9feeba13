#include "FileIdentity.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "InputError.h"
#include "OutputTarget.h"
#include "SignalsBlockedPosix.h"

namespace tool {

namespace {

std::optional<FileIdentity> identityOf(const struct stat& found) {
    if (S_ISCHR(found.st_mode)) {
        return std::nullopt;
    }
    return FileIdentity{found.st_dev, found.st_ino, {}};
}

// Asked in a folder of the same kind that is made for it, so that nothing is
// overwritten and the file system's own rules count.
bool takesForOne(const std::filesystem::path& folder, const std::filesystem::path& name,
                 const std::filesystem::path& other) {
    const SignalsBlocked blocked;
    std::string probe = (folder / ".fontengine-XXXXXX").string();
    if (mkdtemp(probe.data()) == nullptr) {
        return false;
    }
    const std::filesystem::path file = std::filesystem::path(probe) / name;
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    struct stat found {};
    const bool same = descriptor >= 0 && stat((std::filesystem::path(probe) / other).c_str(), &found) == 0;
    if (descriptor >= 0) {
        close(descriptor);
        unlink(file.c_str());
    }
    rmdir(probe.c_str());
    return same;
}

} // namespace

std::optional<FileIdentity> identityOf(const std::string& path, int standardStream) {
    struct stat found {};
    if (path == standardStreamName) {
        return fstat(standardStream, &found) == 0 ? identityOf(found) : std::nullopt;
    }
    if (stat(path.c_str(), &found) == 0) {
        return identityOf(found);
    }
    try {
        const std::filesystem::path target = followLinks(path);
        if (stat(target.parent_path().c_str(), &found) == 0) {
            return FileIdentity{found.st_dev, found.st_ino, target.filename().string()};
        }
    } catch (const std::system_error&) {
        // Whoever opens it says why it leads nowhere.
    }
    return std::nullopt;
}

bool wouldBeOneFile(const std::string& path, const std::string& other) {
    try {
        const std::filesystem::path target = followLinks(path);
        return takesForOne(target.parent_path(), target.filename(), followLinks(other).filename());
    } catch (const std::system_error&) {
        return false; // neither can be made
    }
}

bool isStandardOutput(const std::string& path) {
    if (path == standardStreamName) {
        return true;
    }
    struct stat named {};
    struct stat standard {};
    if (stat(path.c_str(), &named) != 0 || fstat(STDOUT_FILENO, &standard) != 0) {
        return false;
    }
    const bool same = named.st_dev == standard.st_dev && named.st_ino == standard.st_ino;
    // Two outputs may both go to /dev/null.
    return same && (!S_ISCHR(named.st_mode) || isatty(STDOUT_FILENO) != 0);
}

} // namespace tool
