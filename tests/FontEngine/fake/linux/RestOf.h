#pragma once

// What the platform's interfaces have beyond those that the fake answers. The library
// calls none of it.

#include <dwrite_2.h>

namespace fake {

HRESULT unexpected(const char* operation);

// An interface with everything implemented that the fake has no answer for.
template <typename Interface>
class RestOf : public Interface {};

template <>
class RestOf<IDWriteFontFace> : public IDWriteFontFace {
public:
    DWRITE_FONT_FACE_TYPE STDMETHODCALLTYPE GetType() override {
        unexpected("GetType");
        return {};
    }
    HRESULT STDMETHODCALLTYPE GetFiles(UINT32*, IDWriteFontFile**) override { return unexpected("GetFiles"); }
    UINT32 STDMETHODCALLTYPE GetIndex() override {
        unexpected("GetIndex");
        return {};
    }
    BOOL STDMETHODCALLTYPE IsSymbolFont() override {
        unexpected("IsSymbolFont");
        return {};
    }
    HRESULT STDMETHODCALLTYPE TryGetFontTable(UINT32, const void**, UINT32*, void**, BOOL*) override {
        return unexpected("TryGetFontTable");
    }
    void STDMETHODCALLTYPE ReleaseFontTable(void*) override { unexpected("ReleaseFontTable"); }
};

template <>
class RestOf<IDWriteFactory2> : public IDWriteFactory2 {
public:
    HRESULT STDMETHODCALLTYPE CreateCustomFontCollection(IDWriteFontCollectionLoader*, const void*, UINT32,
                                                         IDWriteFontCollection**) override {
        return unexpected("CreateCustomFontCollection");
    }
    HRESULT STDMETHODCALLTYPE RegisterFontCollectionLoader(IDWriteFontCollectionLoader*) override {
        return unexpected("RegisterFontCollectionLoader");
    }
    HRESULT STDMETHODCALLTYPE UnregisterFontCollectionLoader(IDWriteFontCollectionLoader*) override {
        return unexpected("UnregisterFontCollectionLoader");
    }
    HRESULT STDMETHODCALLTYPE CreateFontFileReference(const WCHAR*, const FILETIME*, IDWriteFontFile**) override {
        return unexpected("CreateFontFileReference");
    }
    HRESULT STDMETHODCALLTYPE CreateCustomFontFileReference(const void*, UINT32, IDWriteFontFileLoader*,
                                                            IDWriteFontFile**) override {
        return unexpected("CreateCustomFontFileReference");
    }
    HRESULT STDMETHODCALLTYPE CreateFontFace(DWRITE_FONT_FACE_TYPE, UINT32, IDWriteFontFile* const*, UINT32,
                                             DWRITE_FONT_SIMULATIONS, IDWriteFontFace**) override {
        return unexpected("CreateFontFace");
    }
    HRESULT STDMETHODCALLTYPE RegisterFontFileLoader(IDWriteFontFileLoader*) override {
        return unexpected("RegisterFontFileLoader");
    }
    HRESULT STDMETHODCALLTYPE UnregisterFontFileLoader(IDWriteFontFileLoader*) override {
        return unexpected("UnregisterFontFileLoader");
    }
    HRESULT STDMETHODCALLTYPE CreateEllipsisTrimmingSign(IDWriteTextFormat*, IDWriteInlineObject**) override {
        return unexpected("CreateEllipsisTrimmingSign");
    }
};

} // namespace fake
