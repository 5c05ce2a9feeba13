#include "PicturePaths.h"

#include <algorithm>
#include <filesystem>

#include "InputError.h"

namespace tool {

std::string picturePath(const std::string& asked, const std::string& drawing, bool several) {
    if (!several || asked == standardStreamName) {
        return asked;
    }
    const std::filesystem::path path(asked);
    const std::filesystem::path stem = drawing == standardStreamName ? "stdin" : std::filesystem::path(drawing).stem();
    return (path.parent_path() / (path.stem().string() + "-" + stem.string() + path.extension().string())).string();
}

void requireEnding(const std::string& option, const std::string& path, const std::string& ending) {
    std::string found = std::filesystem::path(path).extension().string();
    std::transform(found.begin(), found.end(), found.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (!found.empty() && found != ending) {
        throw InputError(option + " " + path + ": does not end in " + ending + "; give a name that does",
                         ExitCode::Usage);
    }
}

} // namespace tool
