// The operations of a face that tell of its file.

#include "fonts/FontFace.h"

#include "fonts/FaceSource.h"
#include "fonts/FontFileReference.h"
#include "fonts/SfntTables.h"

#include <boost/endian/conversion.hpp>

namespace platform {

namespace {

/// Asked of a face, gives the CFontFace behind it, counted; only ours know it.
constexpr GUID ownFontFaceId = detail::guid("c1d4e5b2-7a0f-4c19-8e46-3b9d2f60a871");

} // namespace

Reference<CFontFace> CFontFace::ownFace(IDWriteFontFace* face) {
    void* own = nullptr;
    const bool isOurs = face != nullptr && SUCCEEDED(face->QueryInterface(ownFontFaceId, &own)) && own != nullptr;
    return {isOurs ? static_cast<CFontFace*>(own) : nullptr, false};
}

HRESULT CFontFace::QueryInterface(REFIID riid, void** object) {
    if (riid == ownFontFaceId) {
        AddRef();
        *object = this;
        return S_OK;
    }
    return CInternedObject::QueryInterface(riid, object);
}

DWRITE_FONT_FACE_TYPE CFontFace::GetType() {
    return m_source.type();
}

HRESULT CFontFace::GetFiles(UINT32* numberOfFiles, IDWriteFontFile** fontFiles) {
    const UINT32 room = *numberOfFiles;
    *numberOfFiles = 1;
    if (fontFiles == nullptr) {
        return S_OK;
    }
    if (room == 0) {
        return E_INVALIDARG;
    }
    *fontFiles = nullptr;
    return guarded([&] {
        *fontFiles = new CFontFileReference(m_source.data());
        return S_OK;
    });
}

UINT32 CFontFace::GetIndex() {
    return static_cast<UINT32>(m_source.index());
}

BOOL CFontFace::IsSymbolFont() {
    bool isSymbol = false;
    guarded([&] {
        isSymbol = hasSymbolEncoding(hbFace());
        return S_OK;
    });
    return isSymbol ? TRUE : FALSE;
}

HRESULT CFontFace::TryGetFontTable(UINT32 openTypeTableTag, const void** tableData, UINT32* tableSize,
                                   void** tableContext, BOOL* exists) {
    *tableData = nullptr;
    *tableSize = 0;
    *tableContext = nullptr;
    *exists = FALSE;
    return guarded([&] {
        // The tag's first letter is its lowest byte here, and its highest one in HarfBuzz.
        hb_blob_t* const blob = m_source.table(boost::endian::endian_reverse(openTypeTableTag)).release();
        if (blob != nullptr) {
            unsigned length = 0;
            *tableData = hb_blob_get_data(blob, &length);
            *tableSize = length;
            *tableContext = blob;
            *exists = TRUE;
        }
        return S_OK;
    });
}

void CFontFace::ReleaseFontTable(void* tableContext) {
    hb_blob_destroy(static_cast<hb_blob_t*>(tableContext));
}

} // namespace platform
