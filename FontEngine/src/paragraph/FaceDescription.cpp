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
    takeMetrics(pFace, face);
    return face;
}

} // namespace fonts
