#include "TemporaryFile.h"

#include <cerrno>
#include <mutex>
#include <random>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "OutputTarget.h"

namespace tool {

namespace {

constexpr int mostAttempts = 100;

// A handler of the console's events runs in a thread of its own.
std::mutex namesMutex;
TemporaryFile::Name* firstName = nullptr;

BOOL WINAPI removeFilesAndGoOn(DWORD) {
    const std::lock_guard lock(namesMutex);
    for (const TemporaryFile::Name* name = firstName; name != nullptr; name = name->next) {
        DeleteFileW(std::filesystem::path(name->path).c_str());
    }
    return FALSE;
}

[[noreturn]] void throwLastError() {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
}

// Nothing where the name is taken.
std::FILE* create(const std::filesystem::path& path) {
    // Shared for deleting, so that the handler can delete what is open.
    HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        if (GetLastError() == ERROR_FILE_EXISTS) {
            return nullptr;
        }
        throwLastError();
    }
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_RDWR | _O_BINARY);
    if (descriptor < 0) {
        CloseHandle(handle);
        throw std::system_error(errno, std::generic_category());
    }
    return _fdopen(descriptor, "w+b");
}

std::filesystem::path freshName(const std::filesystem::path& folder) {
    static std::random_device random;
    return folder / (".fontengine-" + std::to_string(random()));
}

} // namespace

TemporaryFile::TemporaryFile(const std::filesystem::path& folder) {
    const std::filesystem::path absolute = std::filesystem::absolute(folder);
    for (int attempt = 0; attempt < mostAttempts && m_handle == nullptr; ++attempt) {
        const std::filesystem::path path = freshName(absolute);
        m_handle = create(path);
        m_name.path = path.string();
    }
    if (m_handle == nullptr) {
        throw std::system_error(std::make_error_code(std::errc::file_exists));
    }
    const std::lock_guard lock(namesMutex);
    m_name.next = std::exchange(firstName, &m_name);
}

TemporaryFile::~TemporaryFile() {
    if (m_handle != nullptr) {
        std::fclose(m_handle);
    }
    if (!m_name.path.empty()) {
        DeleteFileW(std::filesystem::path(m_name.path).c_str());
        forget();
    }
}

void TemporaryFile::forget() {
    const std::lock_guard lock(namesMutex);
    Name** link = &firstName;
    while (*link != &m_name) {
        link = &(*link)->next;
    }
    *link = m_name.next;
    m_name.path.clear();
}

void TemporaryFile::replace(const std::filesystem::path& target) {
    bringToDisk(m_handle);
    if (std::fclose(std::exchange(m_handle, nullptr)) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
    const std::filesystem::path from(m_name.path);
    // The first keeps what the system knows about the file that stood there.
    const bool replaced = std::filesystem::exists(target)
                              ? ReplaceFileW(target.c_str(), from.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS,
                                             nullptr, nullptr) != 0
                              : MoveFileExW(from.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0;
    if (!replaced) {
        throwLastError();
    }
    forget();
}

void removeTemporaryFilesOnSignals() {
    SetConsoleCtrlHandler(&removeFilesAndGoOn, TRUE);
}

} // namespace tool
