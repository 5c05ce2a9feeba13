#include "TemporaryFile.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "OutputTarget.h"
#include "SignalsBlockedPosix.h"

namespace tool {

namespace {

[[noreturn]] void throwErrno() {
    throw std::system_error(errno, std::generic_category());
}

void require(bool success) {
    if (!success) {
        throwErrno();
    }
}

// The handler reads it, so it changes with signals blocked only: together with
// the files that it names.
TemporaryFile::Name* firstName = nullptr;

#ifdef NSIG
constexpr int signalCount = NSIG;
#else
constexpr int signalCount = 128;
#endif
std::array<struct sigaction, signalCount> actionsBefore;

// A stack that has run over cannot carry the handler as well.
alignas(16) std::array<char, 65536> handlerStack;

extern "C" void removeFilesAndGoOn(int signal) {
    for (const TemporaryFile::Name* name = firstName; name != nullptr; name = name->next) {
        unlink(name->path.c_str());
    }
    sigaction(signal, &actionsBefore[static_cast<std::size_t>(signal)], nullptr);
    raise(signal); // comes when this handler is left
}

bool endsTheProgram(int signal) {
    switch (signal) {
    case SIGKILL:
    case SIGSTOP:
    case SIGCHLD:
    case SIGCONT:
    case SIGTSTP:
    case SIGTTIN:
    case SIGTTOU:
    case SIGURG:
    case SIGWINCH:
        return false;
    default:
        return true;
    }
}

mode_t modeOfNewFiles() {
    const mode_t mask = umask(0);
    umask(mask);
    return (S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH) & ~mask;
}

void bringFolderToDisk(const std::filesystem::path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor); // the file itself is there in any case
        close(descriptor);
    }
}

// True where the file now has the mode and the owner of what stands at the target.
bool takeOn(int descriptor, const std::filesystem::path& target) {
    struct stat before {};
    if (stat(target.c_str(), &before) != 0) {
        require(errno == ENOENT);
        require(fchmod(descriptor, modeOfNewFiles()) == 0);
        return true;
    }
    if (!S_ISREG(before.st_mode)) {
        errno = S_ISDIR(before.st_mode) ? EISDIR : EEXIST;
        throwErrno();
    }
    struct stat now {};
    require(fstat(descriptor, &now) == 0);
    const bool sameOwner = now.st_uid == before.st_uid && now.st_gid == before.st_gid;
    if (!sameOwner && fchown(descriptor, before.st_uid, before.st_gid) != 0) {
        return false;
    }
    require(fchmod(descriptor, before.st_mode & 07777) == 0);
    return true;
}

} // namespace

TemporaryFile::TemporaryFile(const std::filesystem::path& folder) {
    std::string path = (std::filesystem::absolute(folder) / ".fontengine-XXXXXX").string();
    m_name.path.reserve(path.size());
    const SignalsBlocked blocked;
    const int descriptor = mkostemp(path.data(), O_CLOEXEC);
    require(descriptor >= 0);
    m_name.path = path;
    m_name.next = firstName;
    firstName = &m_name;
    m_handle = fdopen(descriptor, "w+b");
    if (m_handle == nullptr) {
        const int reason = errno;
        close(descriptor);
        unlink(path.c_str());
        forget();
        throw std::system_error(reason, std::generic_category());
    }
}

TemporaryFile::~TemporaryFile() {
    if (m_handle != nullptr) {
        std::fclose(m_handle);
    }
    if (!m_name.path.empty()) {
        const SignalsBlocked blocked;
        unlink(m_name.path.c_str());
        forget();
    }
}

void TemporaryFile::forget() {
    Name** link = &firstName;
    while (*link != &m_name) {
        link = &(*link)->next;
    }
    *link = m_name.next;
    m_name.path.clear();
}

void TemporaryFile::replace(const std::filesystem::path& target) {
    require(std::fflush(m_handle) == 0);
    const int descriptor = fileno(m_handle);
    if (!takeOn(descriptor, target)) {
        const OutputTarget inPlace{.path = target, .keepsItsFile = true, .descriptor = {}};
        copyBytes(m_handle, inPlace, openForWriting(inPlace).get());
        return;
    }
    bringToDisk(m_handle);
    require(std::fclose(std::exchange(m_handle, nullptr)) == 0);
    {
        const SignalsBlocked blocked;
        require(std::rename(m_name.path.c_str(), target.c_str()) == 0);
        forget();
    }
    bringFolderToDisk(target.parent_path());
}

void removeTemporaryFilesOnSignals() {
    stack_t stack{};
    stack.ss_sp = handlerStack.data();
    stack.ss_size = handlerStack.size();
    sigaltstack(&stack, nullptr);
    struct sigaction action {};
    action.sa_handler = &removeFilesAndGoOn;
    action.sa_flags = SA_ONSTACK;
    sigfillset(&action.sa_mask);
    for (int signal = 1; signal < signalCount; ++signal) {
        struct sigaction& before = actionsBefore[static_cast<std::size_t>(signal)];
        if (!endsTheProgram(signal) || sigaction(signal, nullptr, &before) != 0) {
            continue;
        }
        // What the program's parent wants ignored (nohup) stays ignored.
        if (before.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace tool
