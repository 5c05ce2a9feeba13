#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace tool {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

// Where the bytes for a path that the user gave really go.
struct OutputTarget {
    // Behind all symbolic links; it need not exist.
    std::filesystem::path path;
    // Gets the bytes rather than a new file in its place: a device, a pipe, one
    // of the program's open files, or a file in a folder that takes no others.
    bool keepsItsFile = false;
    // For "-" and the names of open files (/dev/stdout): which one.
    std::optional<int> descriptor;
};

// The file behind all symbolic links, which need not exist, in its real folder.
// Throws std::system_error.
std::filesystem::path followLinks(const std::filesystem::path& path);

// Throws std::system_error where nothing can be written there: the folder is
// missing, a folder bears the name, permissions are lacking.
OutputTarget resolveOutput(const std::string& path);

// Opens a target that keeps its file. Throws std::system_error.
FileHandle openForWriting(const OutputTarget& target);

// Brings all bytes of `source`, from its start, into the opened target. Throws
// std::system_error.
void copyBytes(std::FILE* source, const OutputTarget& target, std::FILE* opened);

// Waits until the file's bytes are on disk. Throws std::system_error.
void bringToDisk(std::FILE* file);

// Goes to a byte of the file. Not 0 on failure, with errno set.
int seekTo(std::FILE* file, long long position);

} // namespace tool
