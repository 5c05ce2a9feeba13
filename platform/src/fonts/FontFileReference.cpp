#include "fonts/FontFileReference.h"

namespace platform {

namespace {

/// Asked of a file, gives the CFontFileReference behind it, counted; only ours know it.
constexpr GUID ownFontFileId = detail::guid("4f0a6be1-53d2-4d0e-9c3a-7f6cf0c0b2d8");

} // namespace

HRESULT CFontFileReference::dataOf(IDWriteFontFile& file, std::shared_ptr<FontData>& data) {
    void* own = nullptr;
    if (SUCCEEDED(file.QueryInterface(ownFontFileId, &own)) && own != nullptr) {
        const Reference<CFontFileReference> held(static_cast<CFontFileReference*>(own), false);
        data = held->m_data;
        return S_OK;
    }
    IDWriteFontFileLoader* loader = nullptr;
    HRESULT result = file.GetLoader(&loader);
    if (FAILED(result)) {
        return result;
    }
    const Reference<IDWriteFontFileLoader> held(loader, false);
    const void* key = nullptr;
    UINT32 size = 0;
    result = loader != nullptr ? file.GetReferenceKey(&key, &size) : E_FAIL;
    if (FAILED(result)) {
        return result;
    }
    return makeFontData(*loader, key != nullptr ? std::string(static_cast<const char*>(key), size) : std::string(),
                        data);
}

HRESULT CFontFileReference::QueryInterface(REFIID riid, void** object) {
    if (riid == ownFontFileId) {
        AddRef();
        *object = this;
        return S_OK;
    }
    return CHeapObject::QueryInterface(riid, object);
}

HRESULT CFontFileReference::GetReferenceKey(const void** fontFileReferenceKey, UINT32* fontFileReferenceKeySize) {
    *fontFileReferenceKey = nullptr;
    *fontFileReferenceKeySize = 0;
    return guarded([&] {
        const std::string& key = m_data->key();
        *fontFileReferenceKey = key.data();
        *fontFileReferenceKeySize = static_cast<UINT32>(key.size());
        return S_OK;
    });
}

HRESULT CFontFileReference::GetLoader(IDWriteFontFileLoader** fontFileLoader) {
    handOut(m_data->loader(), fontFileLoader);
    return S_OK;
}

HRESULT CFontFileReference::Analyze(BOOL* isSupportedFontType, DWRITE_FONT_FILE_TYPE* fontFileType,
                                    DWRITE_FONT_FACE_TYPE* fontFaceType, UINT32* numberOfFaces) {
    const auto tell = [&](const FileKind& kind) {
        *isSupportedFontType = kind.faceCount > 0 ? TRUE : FALSE;
        *fontFileType = kind.file;
        *numberOfFaces = kind.faceCount;
        if (fontFaceType != nullptr) {
            *fontFaceType = kind.face;
        }
    };
    tell({});
    return guarded([&] {
        std::shared_ptr<const FontFile> file;
        HRESULT result = m_data->open(file);
        if (SUCCEEDED(result)) {
            tell(file->kind());
        }
        return result;
    });
}

} // namespace platform
