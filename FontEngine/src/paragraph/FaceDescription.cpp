#include "FaceDescription.h"

#include <vector>

#include <oslayer/checkHResult.h>

namespace fonts {

namespace {

// The English name, else the first.
std::wstring nameOf(const oslayer::com_ptr<IDWriteLocalizedStrings>& pNames) {
    if (!pNames || pNames->GetCount() == 0) {
        return {};
    }
    UINT32 index = 0;
    BOOL exists = FALSE;
    OSLAYER_CHECK(pNames->FindLocaleName(L"en-us", &index, &exists));
    index = exists ? index : 0;
    UINT32 length = 0;
    OSLAYER_CHECK(pNames->GetStringLength(index, &length));
    std::wstring name(length + 1, L'\0');
    OSLAYER_CHECK(pNames->GetString(index, name.data(), length + 1));
    name.resize(length);
    return name;
}

oslayer::com_ptr<IDWriteFont> fontOf(const oslayer::com_ptr<IDWriteFontFace>& pFace) {
    oslayer::com_ptr<IUnknown> pUnknown;
    OSLAYER_CHECK(DWriteCreateFactory(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), &pUnknown));
    oslayer::com_ptr<IDWriteFactory> pFactory;
    pFactory.queryFrom(pUnknown);
    oslayer::com_ptr<IDWriteFontCollection> pCollection;
    OSLAYER_CHECK(pFactory->GetSystemFontCollection(&pCollection));
    oslayer::com_ptr<IDWriteFont> pFont;
    // A face from elsewhere has no font here.
    if (FAILED(pCollection->GetFontFromFontFace(pFace, &pFont))) {
        return {};
    }
    return pFont;
}

void takeNames(const oslayer::com_ptr<IDWriteFont>& pFont, SFontFace& face) {
    oslayer::com_ptr<IDWriteFontFamily> pFamily;
    OSLAYER_CHECK(pFont->GetFontFamily(&pFamily));
    oslayer::com_ptr<IDWriteLocalizedStrings> pNames;
    OSLAYER_CHECK(pFamily->GetFamilyNames(&pNames));
    face.family = nameOf(pNames);
    OSLAYER_CHECK(pFont->GetFaceNames(&pNames));
    face.face = nameOf(pNames);
    BOOL exists = FALSE;
    OSLAYER_CHECK(pFont->GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_WIN32_FAMILY_NAMES, &pNames, &exists));
    face.win32Family = exists ? nameOf(pNames) : std::wstring();
}

void takeFile(const oslayer::com_ptr<IDWriteFontFace>& pFace, SFontFace& face) {
    face.index = pFace->GetIndex();
    UINT32 count = 1;
    oslayer::com_ptr<IDWriteFontFile> pFile;
    // Faces of several files are of formats that no font has had for long.
    if (FAILED(pFace->GetFiles(&count, &pFile)) || !pFile) {
        return;
    }
    oslayer::com_ptr<IDWriteFontFileLoader> pLoader;
    OSLAYER_CHECK(pFile->GetLoader(&pLoader));
    oslayer::com_ptr<IDWriteLocalFontFileLoader> pLocalLoader;
    pLocalLoader.queryFrom(pLoader);
    if (!pLocalLoader) {
        return;
    }
    const void* key = nullptr;
    UINT32 keySize = 0;
    OSLAYER_CHECK(pFile->GetReferenceKey(&key, &keySize));
    UINT32 length = 0;
    OSLAYER_CHECK(pLocalLoader->GetFilePathLengthFromKey(key, keySize, &length));
    face.file.resize(length + 1);
    OSLAYER_CHECK(pLocalLoader->GetFilePathFromKey(key, keySize, face.file.data(), length + 1));
    face.file.resize(length);
}

void takeMetrics(const oslayer::com_ptr<IDWriteFontFace>& pFace, SFontFace& face) {
    DWRITE_FONT_METRICS metrics = {};
    pFace->GetMetrics(&metrics);
    if (metrics.designUnitsPerEm > 0) {
        const double em = metrics.designUnitsPerEm;
        face.capHeight = metrics.capHeight / em;
        face.ascent = metrics.ascent / em;
        face.descent = metrics.descent / em;
    }
    const DWRITE_FONT_SIMULATIONS simulations = pFace->GetSimulations();
    face.isEmboldened = (simulations & DWRITE_FONT_SIMULATIONS_BOLD) != 0;
    face.isSlanted = (simulations & DWRITE_FONT_SIMULATIONS_OBLIQUE) != 0;
}

} // namespace

SFontFace describeFace(const oslayer::com_ptr<IDWriteFontFace>& pFace) {
    SFontFace face;
    if (const oslayer::com_ptr<IDWriteFont> pFont = fontOf(pFace)) {
        takeNames(pFont, face);
    }
    takeFile(pFace, face);
    takeMetrics(pFace, face);
    return face;
}

} // namespace fonts
