#include <fontfolder.h>

#include <filesystem>

#include <fontconfig/fontconfig.h>

#include "fonts/FontCollection.h"

HRESULT WINAPI AddFontFolder(const char* folder) {
    std::error_code error;
    if (folder == nullptr || !std::filesystem::is_directory(folder, error)) {
        return E_INVALIDARG;
    }
    return platform::CFontCollection::beforeReading(
               [folder] { return FcConfigAppFontAddDir(nullptr, reinterpret_cast<const FcChar8*>(folder)) != FcFalse; })
               ? S_OK
               : E_FAIL;
}
