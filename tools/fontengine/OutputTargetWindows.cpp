#include "OutputTarget.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <io.h>

#include "InputError.h"

namespace tool {

namespace {

constexpr int standardOutput = 1;
constexpr int writing = 2; // for _waccess

[[noreturn]] void fail(std::errc reason) {
    throw std::system_error(std::make_error_code(reason));
}

void require(bool success) {
    if (!success) {
        throw std::system_error(errno, std::generic_category());
    }
}

} // namespace

std::filesystem::path followLinks(const std::filesystem::path& path) {
    const std::filesystem::path folder = path.parent_path();
    const std::filesystem::path real =
        std::filesystem::canonical(folder.empty() ? std::filesystem::path(".") : folder) / path.filename();
    return std::filesystem::exists(real) ? std::filesystem::canonical(real) : real;
}

OutputTarget resolveOutput(const std::string& path) {
    if (path == standardStreamName) {
        return {.path = path, .keepsItsFile = true, .descriptor = standardOutput};
    }
    if (path.empty()) {
        fail(std::errc::no_such_file_or_directory);
    }
    OutputTarget target{.path = followLinks(path), .keepsItsFile = false, .descriptor = {}};
    const std::filesystem::file_status found = std::filesystem::status(target.path);
    if (std::filesystem::is_directory(found)) {
        fail(std::errc::is_a_directory);
    }
    if (std::filesystem::exists(found)) {
        require(_waccess(target.path.c_str(), writing) == 0);
        target.keepsItsFile = !std::filesystem::is_regular_file(found);
    }
    return target;
}

FileHandle openForWriting(const OutputTarget& target) {
    FileHandle file;
    if (target.descriptor) {
        const int descriptor = _dup(*target.descriptor);
        require(descriptor >= 0);
        _setmode(descriptor, _O_BINARY);
        file.reset(_fdopen(descriptor, "wb"));
    } else {
        file.reset(_wfopen(target.path.c_str(), L"r+b"));
    }
    require(file != nullptr);
    return file;
}

void copyBytes(std::FILE* source, const OutputTarget& target, std::FILE* opened) {
    require(seekTo(source, 0) == 0);
    if (!target.descriptor && std::filesystem::is_regular_file(target.path)) {
        require(_chsize_s(_fileno(opened), 0) == 0);
    }
    std::array<char, 65536> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), source)) {
        require(std::fwrite(block.data(), 1, count, opened) == count);
    }
    require(std::ferror(source) == 0);
    require(std::fflush(opened) == 0);
}

void bringToDisk(std::FILE* file) {
    require(std::fflush(file) == 0 && _commit(_fileno(file)) == 0);
}

int seekTo(std::FILE* file, long long position) {
    return _fseeki64(file, position, SEEK_SET);
}

} // namespace tool
