#pragma once

#include <dwrite_2.h>

#include "com/ComObject.h"
#include "com/Reference.h"
#include "fonts/LoaderRegistry.h"

namespace platform {

/// The operations of a factory, shared or isolated.
class FactoryOperations : public IDWriteFactory2 {
public:
    /// __uuidof means the interface.
    using value_type = IDWriteFactory2;

    HRESULT STDMETHODCALLTYPE GetSystemFontCollection(IDWriteFontCollection** fontCollection,
                                                      BOOL checkForUpdates) final;
    HRESULT STDMETHODCALLTYPE CreateCustomFontCollection(IDWriteFontCollectionLoader* collectionLoader,
                                                         const void* collectionKey, UINT32 collectionKeySize,
                                                         IDWriteFontCollection** fontCollection) final;
    HRESULT STDMETHODCALLTYPE RegisterFontCollectionLoader(IDWriteFontCollectionLoader* fontCollectionLoader) final;
    HRESULT STDMETHODCALLTYPE UnregisterFontCollectionLoader(IDWriteFontCollectionLoader* fontCollectionLoader) final;
    HRESULT STDMETHODCALLTYPE CreateFontFileReference(const WCHAR* filePath, const FILETIME* lastWriteTime,
                                                      IDWriteFontFile** fontFile) final;
    HRESULT STDMETHODCALLTYPE CreateCustomFontFileReference(const void* fontFileReferenceKey,
                                                            UINT32 fontFileReferenceKeySize,
                                                            IDWriteFontFileLoader* fontFileLoader,
                                                            IDWriteFontFile** fontFile) final;
    HRESULT STDMETHODCALLTYPE CreateFontFace(DWRITE_FONT_FACE_TYPE fontFaceType, UINT32 numberOfFiles,
                                             IDWriteFontFile* const* fontFiles, UINT32 faceIndex,
                                             DWRITE_FONT_SIMULATIONS fontFaceSimulationFlags,
                                             IDWriteFontFace** fontFace) final;
    HRESULT STDMETHODCALLTYPE RegisterFontFileLoader(IDWriteFontFileLoader* fontFileLoader) final;
    HRESULT STDMETHODCALLTYPE UnregisterFontFileLoader(IDWriteFontFileLoader* fontFileLoader) final;
    HRESULT STDMETHODCALLTYPE CreateTextFormat(const WCHAR* fontFamilyName, IDWriteFontCollection* fontCollection,
                                               DWRITE_FONT_WEIGHT fontWeight, DWRITE_FONT_STYLE fontStyle,
                                               DWRITE_FONT_STRETCH fontStretch, FLOAT fontSize, const WCHAR* localeName,
                                               IDWriteTextFormat** textFormat) final;
    HRESULT STDMETHODCALLTYPE CreateTypography(IDWriteTypography** typography) final;
    HRESULT STDMETHODCALLTYPE CreateTextLayout(const WCHAR* string, UINT32 stringLength, IDWriteTextFormat* textFormat,
                                               FLOAT maxWidth, FLOAT maxHeight, IDWriteTextLayout** textLayout) final;
    HRESULT STDMETHODCALLTYPE CreateEllipsisTrimmingSign(IDWriteTextFormat* textFormat,
                                                         IDWriteInlineObject** trimmingSign) final;
    HRESULT STDMETHODCALLTYPE GetSystemFontFallback(IDWriteFontFallback** fontFallback) final;

protected:
    /// The collection that stands for the system's fonts.
    virtual IDWriteFontCollection& systemCollection() = 0;

    ~FactoryOperations() = default;

private:
    LoaderRegistry<IDWriteFontFileLoader> m_fileLoaders;
    LoaderRegistry<IDWriteFontCollectionLoader> m_collectionLoaders;
};

/// The factory that the whole process shares.
class CSharedFactory final
    : public CInternedObject<FactoryOperations, IDWriteFactory2, IDWriteFactory1, IDWriteFactory> {
public:
    static CSharedFactory& instance();

protected:
    IDWriteFontCollection& systemCollection() override;
};

/// A factory of a caller's own. Its fonts are those of the process; only the collection is an object of its own.
class CIsolatedFactory final : public CHeapObject<FactoryOperations, IDWriteFactory2, IDWriteFactory1, IDWriteFactory> {
public:
    CIsolatedFactory();

protected:
    IDWriteFontCollection& systemCollection() override { return *m_collection; }

private:
    Reference<IDWriteFontCollection> m_collection;
};

} // namespace platform
