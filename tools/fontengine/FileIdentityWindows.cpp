#include "FileIdentity.h"

#include <filesystem>
#include <memory>
#include <system_error>

#include <io.h>
#include <windows.h>

#include "InputError.h"
#include "OutputTarget.h"

namespace tool {

namespace {

constexpr int standardOutput = 1;

struct CloseWindowsHandle {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using WindowsHandle = std::unique_ptr<void, CloseWindowsHandle>;

std::optional<FileIdentity> identityOf(HANDLE handle) {
    BY_HANDLE_FILE_INFORMATION found{};
    if (GetFileType(handle) != FILE_TYPE_DISK || GetFileInformationByHandle(handle, &found) == 0) {
        return std::nullopt;
    }
    return FileIdentity{
        found.dwVolumeSerialNumber, std::uint64_t{found.nFileIndexHigh} << 32U | found.nFileIndexLow, {}};
}

std::optional<FileIdentity> identityOf(const std::filesystem::path& path) {
    // No access asked for: only what the folder says of it.
    HANDLE handle = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    const WindowsHandle opened(handle);
    return identityOf(handle);
}

} // namespace

std::optional<FileIdentity> identityOf(const std::string& path, int standardStream) {
    if (path == standardStreamName) {
        return identityOf(reinterpret_cast<HANDLE>(_get_osfhandle(standardStream)));
    }
    if (const auto identity = identityOf(std::filesystem::path(path))) {
        return identity;
    }
    try {
        const std::filesystem::path target = followLinks(path);
        if (auto identity = identityOf(target.parent_path())) {
            identity->name = target.filename().string();
            return identity;
        }
    } catch (const std::system_error&) {
        // Whoever opens it says why it leads nowhere.
    }
    return std::nullopt;
}

// By the rules of the system's own comparison of names.
bool wouldBeOneFile(const std::string& path, const std::string& other) {
    const std::wstring name = std::filesystem::path(path).filename().wstring();
    const std::wstring otherName = std::filesystem::path(other).filename().wstring();
    return CompareStringOrdinal(name.c_str(), -1, otherName.c_str(), -1, TRUE) == CSTR_EQUAL;
}

bool isStandardOutput(const std::string& path) {
    if (path == standardStreamName) {
        return true;
    }
    const auto identity = identityOf(std::filesystem::path(path));
    return identity && identity == identityOf(reinterpret_cast<HANDLE>(_get_osfhandle(standardOutput)));
}

} // namespace tool
