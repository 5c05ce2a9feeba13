#include "CallPaths.h"

#include <map>
#include <optional>

#include "FileIdentity.h"
#include "InputError.h"
#include "OutputFile.h"

namespace tool {

namespace {

constexpr int standardInput = 0;
constexpr int standardOutput = 1;

bool isWritten(const CallPath& path) {
    return path.use == CallPath::Use::Written;
}

std::string nameOf(const CallPath& path) {
    return path.option + " " + path.path + (path.drawing.empty() ? "" : " (for " + path.drawing + ")");
}

[[noreturn]] void failAsSame(const CallPath& first, const CallPath& second) {
    const std::string advice = !second.drawing.empty() && !first.drawing.empty() ? "; lay these drawings out one by one"
                                                                                 : "; give each a file of its own";
    throw InputError(nameOf(first) + " and " + nameOf(second) + " are the same file" + advice, ExitCode::Usage);
}

// Letters that may count as the same somewhere are alike here; what the folder
// thinks of them is asked then.
std::string roughly(const std::string& name) {
    std::string rough;
    for (const char c : name) {
        if (static_cast<unsigned char>(c) < 0x80) {
            rough += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    return rough;
}

class SeenFiles {
public:
    void add(const CallPath& path) {
        const auto identity = identityOf(path.path, isWritten(path) ? standardOutput : standardInput);
        if (!identity) {
            return;
        }
        const auto [seen, fresh] = m_files.emplace(*identity, &path);
        if (!fresh) {
            compare(*seen->second, path);
            return;
        }
        if (!identity->name.empty()) {
            addMissing(*identity, path);
        }
    }

private:
    static void compare(const CallPath& first, const CallPath& second) {
        const bool readTwice = !isWritten(first) && !isWritten(second);
        if (!readTwice) {
            failAsSame(first, second);
        }
    }

    void addMissing(FileIdentity identity, const CallPath& path) {
        identity.name = roughly(identity.name);
        std::vector<const CallPath*>& alike = m_missing[identity];
        for (const CallPath* other : alike) {
            if ((isWritten(path) || isWritten(*other)) && wouldBeOneFile(other->path, path.path)) {
                failAsSame(*other, path);
            }
        }
        alike.push_back(&path);
    }

    std::map<FileIdentity, const CallPath*> m_files;
    std::map<FileIdentity, std::vector<const CallPath*>> m_missing;
};

void requireOneReaderOfStandardInput(const std::vector<CallPath>& paths) {
    const CallPath* reader = nullptr;
    for (const CallPath& path : paths) {
        if (isWritten(path) || path.path != standardStreamName) {
            continue;
        }
        if (reader != nullptr) {
            throw InputError(nameOf(*reader) + " and " + nameOf(path) +
                                 " both read standard input; give one of them a file",
                             ExitCode::Usage);
        }
        reader = &path;
    }
}

} // namespace

void checkPaths(const std::vector<CallPath>& paths) {
    requireOneReaderOfStandardInput(paths);
    SeenFiles seen;
    for (const CallPath& path : paths) {
        seen.add(path);
    }
    for (const CallPath& path : paths) {
        if (isWritten(path)) {
            requireWritable(path.path);
        }
    }
}

} // namespace tool
