#include "OutputFile.h"

#include <cerrno>
#include <system_error>

#include "FileBuffer.h"
#include "InputError.h"
#include "OutputTarget.h"
#include "TemporaryFile.h"

namespace tool {

namespace {

// Beside the target, since a file takes another's place within one file system only.
std::filesystem::path folderFor(const OutputTarget& target) {
    return target.keepsItsFile ? std::filesystem::temp_directory_path() : target.path.parent_path();
}

// Runs what fails with the system's reason.
template <typename Operation>
auto withPathInErrors(const std::string& path, Operation operation) {
    try {
        return operation();
    } catch (const std::system_error& failure) {
        throw unwritable(path, failure.code());
    }
}

} // namespace

class OutputFile::Impl {
public:
    explicit Impl(const std::string& path)
        : m_target(resolveOutput(path)), m_direct(m_target.keepsItsFile ? openForWriting(m_target) : nullptr),
          m_file(folderFor(m_target)), m_buffer(m_file.handle()), m_stream(&m_buffer) {}

    std::ostream& stream() { return m_stream; }

    const std::string& collected() {
        m_stream.flush();
        if (m_buffer.failure()) {
            throw std::system_error(m_buffer.failure());
        }
        if (!m_stream) {
            throw std::system_error(std::make_error_code(std::errc::io_error));
        }
        return m_file.path();
    }

    void commit() {
        collected();
        if (m_direct) {
            copyBytes(m_file.handle(), m_target, m_direct.get());
        } else {
            m_file.replace(m_target.path);
        }
    }

private:
    OutputTarget m_target;
    FileHandle m_direct; // open from the start, so that its reader sees an end whatever happens
    TemporaryFile m_file;
    FileBuffer m_buffer;
    std::ostream m_stream;
};

OutputFile::OutputFile(const std::string& path)
    : m_path(path), m_impl(withPathInErrors(path, [&] { return std::make_unique<Impl>(path); })) {}

OutputFile::~OutputFile() = default;

std::ostream& OutputFile::stream() {
    return m_impl->stream();
}

std::string OutputFile::collected() {
    return withPathInErrors(m_path, [this] { return m_impl->collected(); });
}

void OutputFile::commit() {
    withPathInErrors(m_path, [this] { m_impl->commit(); });
}

void requireWritable(const std::string& path) {
    withPathInErrors(path, [&] { resolveOutput(path); });
}

} // namespace tool
