#pragma once

#include "fonts/FontCollection.h"

namespace platform::test {

/// A collection that a caller made: it hands on what the system's has, but is an object of the caller's own.
class ForeignCollection final : public IDWriteFontCollection {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        const bool isKnown = riid == __uuidof(IUnknown) || riid == __uuidof(IDWriteFontCollection);
        *object = isKnown ? static_cast<IDWriteFontCollection*>(this) : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    UINT32 STDMETHODCALLTYPE GetFontFamilyCount() override { return m_system.GetFontFamilyCount(); }
    HRESULT STDMETHODCALLTYPE GetFontFamily(UINT32 index, IDWriteFontFamily** family) override {
        return m_system.GetFontFamily(index, family);
    }
    HRESULT STDMETHODCALLTYPE FindFamilyName(const WCHAR* name, UINT32* index, BOOL* exists) override {
        return m_system.FindFamilyName(name, index, exists);
    }
    HRESULT STDMETHODCALLTYPE GetFontFromFontFace(IDWriteFontFace* face, IDWriteFont** font) override {
        return m_system.GetFontFromFontFace(face, font);
    }

private:
    CFontCollection& m_system = CFontCollection::system();
};

} // namespace platform::test
