#pragma once

#include "com/ComObject.h"
#include "fonts/FontData.h"

#include <memory>

namespace platform {

/// A font file for callers. Faces made of the same object share its data.
class CFontFileReference final : public CHeapObject<IDWriteFontFile> {
public:
    explicit CFontFileReference(std::shared_ptr<FontData> data) : m_data(std::move(data)) {}

    /// The data behind a file: an object of ours has it, another's is asked for loader and key.
    static HRESULT dataOf(IDWriteFontFile& file, std::shared_ptr<FontData>& data);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    using IUnknown::QueryInterface;
    HRESULT STDMETHODCALLTYPE GetReferenceKey(const void** fontFileReferenceKey,
                                              UINT32* fontFileReferenceKeySize) override;
    HRESULT STDMETHODCALLTYPE GetLoader(IDWriteFontFileLoader** fontFileLoader) override;
    HRESULT STDMETHODCALLTYPE Analyze(BOOL* isSupportedFontType, DWRITE_FONT_FILE_TYPE* fontFileType,
                                      DWRITE_FONT_FACE_TYPE* fontFaceType, UINT32* numberOfFaces) override;

private:
    const std::shared_ptr<FontData> m_data;
};

} // namespace platform
