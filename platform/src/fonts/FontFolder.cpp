#include <fontfolder.h>

#include <filesystem>
#include <set>
#include <vector>

#include <fontconfig/fontconfig.h>

#include "com/ComObject.h"
#include "fonts/FontCollection.h"

namespace {

namespace files = std::filesystem;

const FcChar8* fontconfigPath(const files::path& path) {
    return reinterpret_cast<const FcChar8*>(path.c_str());
}

/// What a folder and the folders in it hold. Folders are entered once, though links lead to them again.
struct FolderContents {
    std::vector<files::path> files;
    /// Pipes, sockets, devices: whoever opens one may wait for ever.
    bool hasSpecialFiles = false;
};

FolderContents contentsOf(const files::path& folder) {
    FolderContents contents;
    std::set<files::path> entered;
    std::vector<files::path> waiting = {folder};
    std::error_code error;
    while (!waiting.empty()) {
        const files::path current = waiting.back();
        waiting.pop_back();
        if (!entered.insert(files::canonical(current, error)).second) {
            continue;
        }
        for (files::directory_iterator entry(current, error), end; entry != end; entry.increment(error)) {
            std::error_code unreadable;
            const files::file_status status = entry->status(unreadable);
            if (files::is_directory(status)) {
                waiting.push_back(entry->path());
            } else if (files::is_regular_file(status)) {
                contents.files.push_back(entry->path());
            } else if (files::exists(status)) {
                contents.hasSpecialFiles = true;
            }
        }
    }
    return contents;
}

bool addFolder(const char* folder) {
    const FolderContents contents = contentsOf(folder);
    if (!contents.hasSpecialFiles) {
        return FcConfigAppFontAddDir(nullptr, fontconfigPath(folder)) != FcFalse;
    }
    // Fontconfig opens all that it finds, and keeps what it read of a folder only as a whole: this takes longer.
    for (const files::path& file : contents.files) {
        FcConfigAppFontAddFile(nullptr, fontconfigPath(file));
    }
    return true;
}

} // namespace

HRESULT WINAPI AddFontFolder(const char* folder) {
    std::error_code error;
    if (folder == nullptr || !files::is_directory(folder, error)) {
        return E_INVALIDARG;
    }
    return platform::guarded([folder] {
        return platform::CFontCollection::beforeReading([folder] { return addFolder(folder); }) ? S_OK : E_FAIL;
    });
}
