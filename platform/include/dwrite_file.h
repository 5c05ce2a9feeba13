#pragma once

// Font files: where the bytes of fonts come from. A host's own files, memory or archives are fonts like any other once
// the host tells how to get at their bytes.
//
// A file is named by a key, which only its loader understands, and opened as a stream. Loaders, streams and
// enumerators are a host's code; the platform's own are those of files on disk (IDWriteLocalFontFileLoader). A host's
// may be called by any thread that uses the fonts, and must not use them themselves meanwhile. What they fail with is
// what the operation that called them fails with.

#include <dwrite_types.h>

#define DWRITE_E_FILEFORMAT platformStatus(0x88985000u)
#define DWRITE_E_FILENOTFOUND platformStatus(0x88985003u)
#define DWRITE_E_FILEACCESS platformStatus(0x88985004u)
#define DWRITE_E_ALREADYREGISTERED platformStatus(0x88985006u)

/// The name of a font's table as a number: DWRITE_MAKE_OPENTYPE_TAG('h', 'e', 'a', 'd').
#define DWRITE_MAKE_OPENTYPE_TAG(a, b, c, d)                                                                           \
    ((static_cast<UINT32>(static_cast<UINT8>(d)) << 24) | (static_cast<UINT32>(static_cast<UINT8>(c)) << 16) |         \
     (static_cast<UINT32>(static_cast<UINT8>(b)) << 8) | static_cast<UINT32>(static_cast<UINT8>(a)))

enum DWRITE_FONT_FILE_TYPE : INT32 {
    /// No font, or one of a kind that cannot be used.
    DWRITE_FONT_FILE_TYPE_UNKNOWN = 0,
    DWRITE_FONT_FILE_TYPE_CFF = 1,
    DWRITE_FONT_FILE_TYPE_TRUETYPE = 2,
    /// Several faces in one file, of whichever outlines.
    DWRITE_FONT_FILE_TYPE_OPENTYPE_COLLECTION = 3,
    DWRITE_FONT_FILE_TYPE_TYPE1_PFM = 4,
    DWRITE_FONT_FILE_TYPE_TYPE1_PFB = 5,
    DWRITE_FONT_FILE_TYPE_VECTOR = 6,
    DWRITE_FONT_FILE_TYPE_BITMAP = 7,
    DWRITE_FONT_FILE_TYPE_TRUETYPE_COLLECTION = DWRITE_FONT_FILE_TYPE_OPENTYPE_COLLECTION
};

enum DWRITE_FONT_FACE_TYPE : INT32 {
    DWRITE_FONT_FACE_TYPE_CFF = 0,
    DWRITE_FONT_FACE_TYPE_TRUETYPE = 1,
    /// A face of a file of several, of whichever outlines.
    DWRITE_FONT_FACE_TYPE_OPENTYPE_COLLECTION = 2,
    DWRITE_FONT_FACE_TYPE_TYPE1 = 3,
    DWRITE_FONT_FACE_TYPE_VECTOR = 4,
    DWRITE_FONT_FACE_TYPE_BITMAP = 5,
    DWRITE_FONT_FACE_TYPE_UNKNOWN = 6,
    DWRITE_FONT_FACE_TYPE_RAW_CFF = 7,
    DWRITE_FONT_FACE_TYPE_TRUETYPE_COLLECTION = DWRITE_FONT_FACE_TYPE_OPENTYPE_COLLECTION
};

struct IDWriteFactory;

/// The bytes of one font file. They stay the same as long as the stream exists.
struct IDWriteFontFileStream : IUnknown {
    /// Hands out `fragmentSize` bytes from `fileOffset` on, which stay until ReleaseFileFragment gets
    /// `fragmentContext`. A fragment that is not within the file is a failure. After a failure nothing is released.
    virtual HRESULT STDMETHODCALLTYPE ReadFileFragment(const void** fragmentStart, UINT64 fileOffset,
                                                       UINT64 fragmentSize, void** fragmentContext) = 0;
    virtual void STDMETHODCALLTYPE ReleaseFileFragment(void* fragmentContext) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFileSize(UINT64* fileSize) = 0;
    /// As in FILETIME, in one number. Tells versions of a file apart.
    virtual HRESULT STDMETHODCALLTYPE GetLastWriteTime(UINT64* lastWriteTime) = 0;
};

/// Opens font files by their keys.
struct IDWriteFontFileLoader : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE CreateStreamFromKey(const void* fontFileReferenceKey,
                                                          UINT32 fontFileReferenceKeySize,
                                                          IDWriteFontFileStream** fontFileStream) = 0;
};

/// The loader of files on disk. What is no key of its own is E_INVALIDARG.
///
/// A path is a file's name in UTF-8. Bytes of it that are no UTF-8 are told as lone surrogates, 0xDC00 added, and taken
/// so.
struct IDWriteLocalFontFileLoader : IDWriteFontFileLoader {
    /// Without the terminator.
    virtual HRESULT STDMETHODCALLTYPE GetFilePathLengthFromKey(const void* fontFileReferenceKey,
                                                               UINT32 fontFileReferenceKeySize,
                                                               UINT32* filePathLength) = 0;
    /// `filePathSize` elements of room, terminator included; too few are E_NOT_SUFFICIENT_BUFFER.
    virtual HRESULT STDMETHODCALLTYPE GetFilePathFromKey(const void* fontFileReferenceKey,
                                                         UINT32 fontFileReferenceKeySize, WCHAR* filePath,
                                                         UINT32 filePathSize) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLastWriteTimeFromKey(const void* fontFileReferenceKey,
                                                              UINT32 fontFileReferenceKeySize,
                                                              FILETIME* lastWriteTime) = 0;
};

/// A font file as its key and its loader.
struct IDWriteFontFile : IUnknown {
    /// The key stays as long as this object.
    virtual HRESULT STDMETHODCALLTYPE GetReferenceKey(const void** fontFileReferenceKey,
                                                      UINT32* fontFileReferenceKeySize) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLoader(IDWriteFontFileLoader** fontFileLoader) = 0;
    /// Looks into the file: whether it holds faces that can be used, of what kind (`fontFaceType` may be null) and how
    /// many. For a file of another kind that is S_OK, FALSE, the unknown types and 0.
    virtual HRESULT STDMETHODCALLTYPE Analyze(BOOL* isSupportedFontType, DWRITE_FONT_FILE_TYPE* fontFileType,
                                              DWRITE_FONT_FACE_TYPE* fontFaceType, UINT32* numberOfFaces) = 0;
};

/// The files of a collection, one after the other. It stands before the first one at first.
struct IDWriteFontFileEnumerator : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE MoveNext(BOOL* hasCurrentFile) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCurrentFontFile(IDWriteFontFile** fontFile) = 0;
};

/// Tells which files a collection consists of, by a key that only the loader understands.
struct IDWriteFontCollectionLoader : IUnknown {
    /// `factory` is the one that is asked for the collection; the loader makes the files with it.
    virtual HRESULT STDMETHODCALLTYPE CreateEnumeratorFromKey(IDWriteFactory* factory, const void* collectionKey,
                                                              UINT32 collectionKeySize,
                                                              IDWriteFontFileEnumerator** fontFileEnumerator) = 0;
};

PLATFORM_UUID(IDWriteFontFileStream, "6d4865fe-0ab8-4d91-8f62-5dd6be34a3e0");
PLATFORM_UUID(IDWriteFontFileLoader, "727cad4e-d6af-4c9e-8a08-d695b11caa49");
PLATFORM_UUID(IDWriteLocalFontFileLoader, "b2d9f3ec-c9fe-4a11-a2ec-d86208f7c0a2");
PLATFORM_UUID(IDWriteFontFile, "739d886a-cef5-47dc-8769-1a8b41bebbb0");
PLATFORM_UUID(IDWriteFontFileEnumerator, "72755049-5ff7-435d-8348-4be97cfa6c7c");
PLATFORM_UUID(IDWriteFontCollectionLoader, "cca920e4-52f0-492b-bfa8-29c72ee0a468");
