#pragma once

// The way in: the factory of everything that fonts and text layouts need.

#include <dwrite_font.h>
#include <dwrite_layout.h>
#include <dwrite_types.h>

/// Thread-safe.
struct IDWriteFactory : IUnknown {
    /// The fonts of the system: the same object each time, with a reference for the
    /// caller. It is read once; `checkForUpdates` changes nothing within a process.
    virtual HRESULT STDMETHODCALLTYPE GetSystemFontCollection(IDWriteFontCollection** fontCollection,
                                                              BOOL checkForUpdates = FALSE) = 0;
    /// The fonts in a host's files, as `collectionLoader` enumerates them for a key: an object of its own each time,
    /// which has families and simulated fonts like the system's. It works wherever a collection is asked for; what its
    /// fonts lack is drawn by the system's. Files are read once each, the damaged ones left out. E_INVALIDARG: a loader
    /// that is not registered with this factory. Any failure of a host's object ends the call with it.
    virtual HRESULT STDMETHODCALLTYPE CreateCustomFontCollection(IDWriteFontCollectionLoader* collectionLoader,
                                                                 const void* collectionKey, UINT32 collectionKeySize,
                                                                 IDWriteFontCollection** fontCollection) = 0;
    /// Makes a loader known to this factory, which holds a reference until the loader is unregistered.
    /// DWRITE_E_ALREADYREGISTERED if it is known.
    virtual HRESULT STDMETHODCALLTYPE
    RegisterFontCollectionLoader(IDWriteFontCollectionLoader* fontCollectionLoader) = 0;
    /// Collections that were made stay. E_INVALIDARG: a loader that is not known.
    virtual HRESULT STDMETHODCALLTYPE
    UnregisterFontCollectionLoader(IDWriteFontCollectionLoader* fontCollectionLoader) = 0;
    /// A file on disk as it is now, or as it was at `lastWriteTime`. Once it has changed, the object no longer opens
    /// it.
    virtual HRESULT STDMETHODCALLTYPE CreateFontFileReference(const WCHAR* filePath, const FILETIME* lastWriteTime,
                                                              IDWriteFontFile** fontFile) = 0;
    /// A file of a host's loader, which is registered with this factory, or of the loader of files on disk. The key is
    /// copied.
    virtual HRESULT STDMETHODCALLTYPE CreateCustomFontFileReference(const void* fontFileReferenceKey,
                                                                    UINT32 fontFileReferenceKeySize,
                                                                    IDWriteFontFileLoader* fontFileLoader,
                                                                    IDWriteFontFile** fontFile) = 0;
    /// A face of one file, of the kind that IDWriteFontFile::Analyze tells; `faceIndex` as in
    /// IDWriteFontFace::GetIndex. Faces of the same file object read each table once.
    /// DWRITE_E_FILEFORMAT: no font, a damaged one, or one of another kind. E_INVALIDARG: any number of files but one,
    /// no such face, a kind or simulation that there is not.
    virtual HRESULT STDMETHODCALLTYPE CreateFontFace(DWRITE_FONT_FACE_TYPE fontFaceType, UINT32 numberOfFiles,
                                                     IDWriteFontFile* const* fontFiles, UINT32 faceIndex,
                                                     DWRITE_FONT_SIMULATIONS fontFaceSimulationFlags,
                                                     IDWriteFontFace** fontFace) = 0;
    /// As for collection loaders. Files and fonts of a loader stay usable when it is unregistered.
    virtual HRESULT STDMETHODCALLTYPE RegisterFontFileLoader(IDWriteFontFileLoader* fontFileLoader) = 0;
    virtual HRESULT STDMETHODCALLTYPE UnregisterFontFileLoader(IDWriteFontFileLoader* fontFileLoader) = 0;
    /// A format for text of one family. The family is not looked up here; a null
    /// collection means the system's. E_INVALIDARG: a size of 0 or below, a weight of
    /// 1000 or above, a style or stretch outside its enumeration, text that is not UTF-16.
    virtual HRESULT STDMETHODCALLTYPE CreateTextFormat(const WCHAR* fontFamilyName,
                                                       IDWriteFontCollection* fontCollection,
                                                       DWRITE_FONT_WEIGHT fontWeight, DWRITE_FONT_STYLE fontStyle,
                                                       DWRITE_FONT_STRETCH fontStretch, FLOAT fontSize,
                                                       const WCHAR* localeName, IDWriteTextFormat** textFormat) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateTypography(IDWriteTypography** typography) = 0;
    /// A layout of `stringLength` UTF-16 units, copied, in a box. E_INVALIDARG and null:
    /// no string or format, a negative extent, an element above 0xFFFF.
    virtual HRESULT STDMETHODCALLTYPE CreateTextLayout(const WCHAR* string, UINT32 stringLength,
                                                       IDWriteTextFormat* textFormat, FLOAT maxWidth, FLOAT maxHeight,
                                                       IDWriteTextLayout** textLayout) = 0;
    /// An ellipsis in the format's font and locale, to stand where text is trimmed. It has no height of its own. It may
    /// be used by any number of formats and threads. E_INVALIDARG and null: no format.
    virtual HRESULT STDMETHODCALLTYPE CreateEllipsisTrimmingSign(IDWriteTextFormat* textFormat,
                                                                 IDWriteInlineObject** trimmingSign) = 0;
};

PLATFORM_UUID(IDWriteFactory, "b859ee5a-d838-4b5b-a2e8-1adc7d93db48");

extern "C" {

/// The shared factory (one object for the process) or an isolated one. E_NOINTERFACE
/// and null for an interface it does not have. Thread-safe.
PLATFORM_EXPORT HRESULT WINAPI DWriteCreateFactory(DWRITE_FACTORY_TYPE factoryType, REFIID iid, IUnknown** factory);
}
