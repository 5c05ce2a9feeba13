#pragma once

#include <cstdint>
#include <fstream>
#include <istream>
#include <memory>
#include <string>

#include "TemporaryFile.h"

namespace tool {

// An input file, open in binary mode: a path, or "-" for standard input.
class InputFile {
public:
    // How often the bytes are read. A pipe gives them once, so for several
    // readings they are kept in a temporary file.
    enum class Readings { One, Several };

    // Throws InputError for a file that cannot be opened or, for several
    // readings of a pipe, not be read or kept.
    InputFile(const std::string& path, Readings readings);

    std::istream& stream() { return *m_stream; }

    // Back to the first byte, which takes several readings.
    void rewind();

    // In bytes; 0 where that shows at the end only.
    std::uint64_t size() const { return m_size; }

    // Throws InputError where reading has failed, which a stream over standard
    // input takes for the end.
    void requireRead() const;

private:
    void keep();

    std::string m_path;
    std::unique_ptr<TemporaryFile> m_kept;
    std::ifstream m_file;
    std::istream* m_stream = &m_file;
    std::uint64_t m_size = 0;
};

} // namespace tool
