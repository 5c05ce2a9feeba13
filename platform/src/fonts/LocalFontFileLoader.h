#pragma once

#include "com/ComObject.h"

#include <dwrite_file.h>

namespace platform {

/// The loader of files on disk, for all factories.
class CLocalFontFileLoader final : public CInternedObject<IDWriteLocalFontFileLoader, IDWriteFontFileLoader> {
public:
    static CLocalFontFileLoader& instance();

    HRESULT STDMETHODCALLTYPE CreateStreamFromKey(const void* fontFileReferenceKey, UINT32 fontFileReferenceKeySize,
                                                  IDWriteFontFileStream** fontFileStream) override;
    HRESULT STDMETHODCALLTYPE GetFilePathLengthFromKey(const void* fontFileReferenceKey,
                                                       UINT32 fontFileReferenceKeySize,
                                                       UINT32* filePathLength) override;
    HRESULT STDMETHODCALLTYPE GetFilePathFromKey(const void* fontFileReferenceKey, UINT32 fontFileReferenceKeySize,
                                                 WCHAR* filePath, UINT32 filePathSize) override;
    HRESULT STDMETHODCALLTYPE GetLastWriteTimeFromKey(const void* fontFileReferenceKey, UINT32 fontFileReferenceKeySize,
                                                      FILETIME* lastWriteTime) override;
};

} // namespace platform
