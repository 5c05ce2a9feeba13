#include "InputFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "InputError.h"
#include "OutputTarget.h"

namespace tool {

namespace {

std::error_code lastError() {
    return {errno == 0 ? ENOENT : errno, std::generic_category()};
}

void copy(std::FILE* from, const std::string& path, std::FILE* to) {
    std::array<char, 65536> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), from)) {
        if (std::fwrite(block.data(), 1, count, to) != count) {
            throw std::system_error(lastError());
        }
    }
    if (std::ferror(from) != 0) {
        throw unreadable(path, lastError());
    }
    if (std::fflush(to) != 0) {
        throw std::system_error(lastError());
    }
}

} // namespace

InputFile::InputFile(const std::string& path, Readings readings) : m_path(path) {
    std::error_code error;
    const bool standardInput = path == standardStreamName;
    if (!standardInput && std::filesystem::is_directory(path, error)) {
        throw unreadable(path, std::make_error_code(std::errc::is_a_directory));
    }
    const bool regular = !standardInput && std::filesystem::is_regular_file(path, error);
    if (readings == Readings::Several && (standardInput || (!regular && std::filesystem::exists(path, error)))) {
        keep();
        return;
    }
    if (standardInput) {
        m_stream = &std::cin;
        return;
    }
    errno = 0;
    m_file.open(path, std::ios::binary);
    if (!m_file) {
        throw unreadable(path, lastError());
    }
    m_size = regular ? std::filesystem::file_size(path, error) : 0;
}

void InputFile::keep() {
    errno = 0;
    FileHandle opened(m_path == standardStreamName ? nullptr : std::fopen(m_path.c_str(), "rb"));
    std::FILE* const from = m_path == standardStreamName ? stdin : opened.get();
    if (from == nullptr) {
        throw unreadable(m_path, lastError());
    }
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    try {
        m_kept = std::make_unique<TemporaryFile>(folder);
        copy(from, m_path, m_kept->handle());
        m_size = std::filesystem::file_size(m_kept->path());
    } catch (const std::system_error& failure) {
        throw InputError(inputName(m_path) + ": cannot be kept in " + folder.string() + ": " +
                         failure.code().message() + "; make room there or give a file");
    }
    m_file.open(m_kept->path(), std::ios::binary);
    if (!m_file) {
        throw unreadable(m_path, lastError());
    }
}

void InputFile::rewind() {
    m_file.clear();
    m_file.seekg(0);
}

void InputFile::requireRead() const {
    if (m_stream == &std::cin && std::ferror(stdin) != 0) {
        throw unreadable(m_path, lastError());
    }
}

} // namespace tool
