#include "FileBuffer.h"

#include <algorithm>
#include <cerrno>

#include "OutputTarget.h"

namespace tool {

bool FileBuffer::succeeded(bool success) {
    if (!success && !m_failure) {
        m_failure = std::error_code(errno, std::generic_category());
    }
    return success;
}

FileBuffer::int_type FileBuffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) {
        return traits_type::not_eof(character);
    }
    const char byte = traits_type::to_char_type(character);
    return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
}

std::streamsize FileBuffer::xsputn(const char* bytes, std::streamsize count) {
    if (count <= 0) {
        return 0; // nothing may be at no address
    }
    const auto wanted = static_cast<std::size_t>(count);
    const std::size_t written = std::fwrite(bytes, 1, wanted, m_file);
    succeeded(written == wanted);
    m_position += static_cast<off_type>(written);
    m_end = std::max(m_end, m_position);
    return static_cast<std::streamsize>(written);
}

int FileBuffer::sync() {
    return succeeded(std::fflush(m_file) == 0) ? 0 : -1;
}

FileBuffer::pos_type FileBuffer::seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode mode) {
    const off_type base = from == std::ios_base::beg ? 0 : from == std::ios_base::cur ? m_position : m_end;
    return seekpos(pos_type(base + offset), mode);
}

FileBuffer::pos_type FileBuffer::seekpos(pos_type position, std::ios_base::openmode) {
    const auto wanted = static_cast<off_type>(position);
    // Asking where the stream stands must not empty the file's buffer.
    if (wanted != m_position && !succeeded(seekTo(m_file, wanted) == 0)) {
        return pos_type(off_type(-1));
    }
    m_position = wanted;
    return position;
}

} // namespace tool
