#pragma once

#include <memory>
#include <ostream>
#include <string>

namespace tool {

// An output file that appears whole or not at all. What is written is collected
// in a temporary file beside the target and takes its place at commit(). Without
// commit() the target stays as it was and nothing is left behind.
//
// Symbolic links are followed. What is no regular file (a device, a pipe, "-"
// for standard output) is never replaced: it gets the bytes at commit(). So does
// a file whose folder allows no others.
class OutputFile {
public:
    // Throws InputError (UnwritableOutput) for a target that cannot be written.
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Binary; can seek. Failing writes show at the latest in commit().
    std::ostream& stream();

    // The path of a file that holds, until commit(), what has been written.
    // Throws InputError.
    std::string collected();

    // Throws InputError.
    void commit();

private:
    class Impl;
    std::string m_path;
    std::unique_ptr<Impl> m_impl;
};

// Throws InputError where an OutputFile for this path could not be made or its
// folder takes none, without making one.
void requireWritable(const std::string& path);

} // namespace tool
