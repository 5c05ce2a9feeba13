#pragma once

#include <cstdio>
#include <streambuf>
#include <system_error>

namespace tool {

// Writes to a C file and remembers why the first write failed, which
// std::filebuf does not tell.
class FileBuffer : public std::streambuf {
public:
    // The file is borrowed.
    explicit FileBuffer(std::FILE* file) : m_file(file) {}

    // No error while nothing failed.
    std::error_code failure() const { return m_failure; }

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* bytes, std::streamsize count) override;
    int sync() override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode mode) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode mode) override;

private:
    bool succeeded(bool success);

    std::FILE* m_file;
    std::error_code m_failure;
    off_type m_position = 0;
    off_type m_end = 0;
};

} // namespace tool
