#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

namespace tool {

// Which file a path means, whatever names lead to it: the same for links, for
// other spellings and for files that are not there yet.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t file = 0; // of the folder where the file is not there yet
    std::string name;       // of a file that is not there yet

    friend auto operator<=>(const FileIdentity&, const FileIdentity&) = default;
};

// Nothing for a path that leads nowhere, and for a device, which any number of
// outputs may share. `standardStream`: the descriptor that "-" stands for.
std::optional<FileIdentity> identityOf(const std::string& path, int standardStream);

// Whether two names, of which no file is there yet, would be one in this folder
// (because it takes capitals for small letters, say).
bool wouldBeOneFile(const std::string& path, const std::string& other);

// True for "-" and for every name of what standard output goes to.
bool isStandardOutput(const std::string& path);

} // namespace tool
