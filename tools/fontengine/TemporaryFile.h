#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

namespace tool {

// A file of a fresh name that is gone with its object: at the end of the block,
// by an exception, and, after removeTemporaryFilesOnSignals(), by any signal
// that can be caught. Used by one thread.
class TemporaryFile {
public:
    // Creates an empty file in the folder, for this user only. Throws
    // std::system_error.
    explicit TemporaryFile(const std::filesystem::path& folder);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // Open for reading and writing.
    std::FILE* handle() const { return m_handle; }
    const std::string& path() const { return m_name.path; }

    // Puts the file in the place of `target`, a file in the same folder or one
    // that is not there yet: on disk first, with the mode and the owner of what
    // stood there. Where the owner cannot be kept, the bytes go into the file
    // that stands there. Throws std::system_error; the target is untouched then,
    // unless the bytes were going into it.
    void replace(const std::filesystem::path& target);

    // One of the files that a signal removes.
    struct Name {
        std::string path;
        Name* next = nullptr;
    };

private:
    void forget();

    Name m_name;
    std::FILE* m_handle = nullptr;
};

// Lets every signal that ends the program remove the temporary files first. A
// closed pipe and a file size limit then are failing writes, no signals.
void removeTemporaryFilesOnSignals();

} // namespace tool
