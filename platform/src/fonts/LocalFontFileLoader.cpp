#include "fonts/LocalFontFileLoader.h"

#include "fonts/LocalFontData.h"
#include "fonts/LocalPath.h"

#include <algorithm>

namespace platform {

namespace {

/// The bytes of a file on disk, for whoever asks for them.
class CLocalFontFileStream final : public CHeapObject<IDWriteFontFileStream> {
public:
    CLocalFontFileStream(std::shared_ptr<const FontFile> file, std::uint64_t writeTime)
        : m_file(std::move(file)), m_writeTime(writeTime) {}

    HRESULT STDMETHODCALLTYPE ReadFileFragment(const void** fragmentStart, UINT64 fileOffset, UINT64 fragmentSize,
                                               void** fragmentContext) override {
        *fragmentStart = nullptr;
        *fragmentContext = nullptr;
        if (fileOffset > m_file->size() || fragmentSize > m_file->size() - fileOffset) {
            return E_FAIL;
        }
        hb_blob_t* const blob = m_file->read(fileOffset, fragmentSize).release();
        if (blob == nullptr || hb_blob_get_length(blob) != fragmentSize || !m_file->isUnchanged()) {
            hb_blob_destroy(blob);
            return DWRITE_E_FILEACCESS;
        }
        *fragmentStart = hb_blob_get_data(blob, nullptr);
        *fragmentContext = blob;
        return S_OK;
    }
    void STDMETHODCALLTYPE ReleaseFileFragment(void* fragmentContext) override {
        hb_blob_destroy(static_cast<hb_blob_t*>(fragmentContext));
    }
    HRESULT STDMETHODCALLTYPE GetFileSize(UINT64* fileSize) override {
        *fileSize = m_file->size();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetLastWriteTime(UINT64* lastWriteTime) override {
        *lastWriteTime = m_writeTime;
        return S_OK;
    }

private:
    const std::shared_ptr<const FontFile> m_file;
    const std::uint64_t m_writeTime;
};

} // namespace

CLocalFontFileLoader& CLocalFontFileLoader::instance() {
    // Lives as long as the process: callers may hold it until its very end.
    static auto& loader = *new CLocalFontFileLoader;
    return loader;
}

HRESULT CLocalFontFileLoader::CreateStreamFromKey(const void* key, UINT32 keySize, IDWriteFontFileStream** stream) {
    *stream = nullptr;
    return guarded([&] {
        const std::optional<LocalKey> local = readLocalKey(key, keySize);
        if (!local) {
            return E_INVALIDARG;
        }
        std::shared_ptr<const FontFile> file;
        const HRESULT result = LocalFontData(std::string(local->path), local->writeTime).open(file);
        if (SUCCEEDED(result)) {
            *stream = new CLocalFontFileStream(std::move(file), local->writeTime);
        }
        return result;
    });
}

HRESULT CLocalFontFileLoader::GetFilePathLengthFromKey(const void* key, UINT32 keySize, UINT32* filePathLength) {
    *filePathLength = 0;
    return guarded([&] {
        const std::optional<LocalKey> local = readLocalKey(key, keySize);
        *filePathLength = local ? static_cast<UINT32>(widePath(local->path).size()) : 0;
        return local ? S_OK : E_INVALIDARG;
    });
}

HRESULT CLocalFontFileLoader::GetFilePathFromKey(const void* key, UINT32 keySize, WCHAR* filePath,
                                                 UINT32 filePathSize) {
    if (filePath == nullptr || filePathSize == 0) {
        return E_INVALIDARG;
    }
    *filePath = L'\0';
    return guarded([&] {
        const std::optional<LocalKey> local = readLocalKey(key, keySize);
        if (!local) {
            return E_INVALIDARG;
        }
        const std::wstring path = widePath(local->path);
        if (path.size() >= filePathSize) {
            return E_NOT_SUFFICIENT_BUFFER;
        }
        *std::copy(path.begin(), path.end(), filePath) = L'\0';
        return S_OK;
    });
}

HRESULT CLocalFontFileLoader::GetLastWriteTimeFromKey(const void* key, UINT32 keySize, FILETIME* lastWriteTime) {
    const std::optional<LocalKey> local = readLocalKey(key, keySize);
    const std::uint64_t time = local ? local->writeTime : 0;
    *lastWriteTime = {static_cast<UINT32>(time), static_cast<UINT32>(time >> 32)};
    return local ? S_OK : E_INVALIDARG;
}

} // namespace platform
