#pragma once

// Fonts: the collection, its families, their fonts and the fonts' faces.
//
// Each of these objects of the system's collection exists once in the process: handing
// one out adds a reference to it, and a forgotten Release costs nothing but the count.
// A collection of a host's own files and all that belongs to it (families, fonts, faces,
// names) ends as a whole, with the last reference to any of it. All of them may be used
// by any number of threads at once. Text comes as UTF-16 units, one per element.

#include <dwrite_file.h>
#include <dwrite_types.h>

struct ID2D1SimplifiedGeometrySink;
struct IDWriteFontCollection;
struct IDWriteFontFamily;
struct IDWriteFontFace;

using IDWriteGeometrySink = ID2D1SimplifiedGeometrySink;

/// One string in several languages, English of the United States first.
struct IDWriteLocalizedStrings : IUnknown {
    virtual UINT32 STDMETHODCALLTYPE GetCount() = 0;
    /// The index of a language such as "en-us", letter case ignored. Always S_OK;
    /// a missing language gives FALSE and 0xFFFFFFFF.
    virtual HRESULT STDMETHODCALLTYPE FindLocaleName(const WCHAR* localeName, UINT32* index, BOOL* exists) = 0;
    /// Lengths leave out the terminator. An index past the end: E_FAIL and 0xFFFFFFFF.
    virtual HRESULT STDMETHODCALLTYPE GetLocaleNameLength(UINT32 index, UINT32* length) = 0;
    /// `size` elements of room, terminator included; too few give
    /// E_NOT_SUFFICIENT_BUFFER and an empty string, an index past the end E_FAIL and
    /// an empty string.
    virtual HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32 index, WCHAR* localeName, UINT32 size) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStringLength(UINT32 index, UINT32* length) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetString(UINT32 index, WCHAR* stringBuffer, UINT32 size) = 0;
};

/// A font's glyphs. Design units are 1 / designUnitsPerEm of the em.
struct IDWriteFontFace : IUnknown {
    /// The kind of the face's file.
    virtual DWRITE_FONT_FACE_TYPE STDMETHODCALLTYPE GetType() = 0;
    /// The face's file, always one. With null for `fontFiles` only the number is told; room for fewer is E_INVALIDARG.
    virtual HRESULT STDMETHODCALLTYPE GetFiles(UINT32* numberOfFiles, IDWriteFontFile** fontFiles) = 0;
    /// Which face of its file this is, from 0.
    ///
    /// A named instance of a variable font has the instance's number, from 1, in the upper 16 bits and the face in the
    /// lower ones, as FreeType and Fontconfig count them. 0 there is the font's default. CreateFontFace takes an index
    /// as it is told here.
    virtual UINT32 STDMETHODCALLTYPE GetIndex() = 0;
    virtual DWRITE_FONT_SIMULATIONS STDMETHODCALLTYPE GetSimulations() = 0;
    /// Whether the face has its characters as symbols, at code points of the font's own.
    virtual BOOL STDMETHODCALLTYPE IsSymbolFont() = 0;
    virtual void STDMETHODCALLTYPE GetMetrics(DWRITE_FONT_METRICS* fontFaceMetrics) = 0;
    virtual UINT16 STDMETHODCALLTYPE GetGlyphCount() = 0;
    /// Measures of `glyphCount` glyphs, of the outline as drawn (simulations included).
    /// A glyph past the end has zeros. E_INVALIDARG for null arrays.
    virtual HRESULT STDMETHODCALLTYPE GetDesignGlyphMetrics(const UINT16* glyphIndices, UINT32 glyphCount,
                                                            DWRITE_GLYPH_METRICS* glyphMetrics,
                                                            BOOL isSideways = FALSE) = 0;
    /// The nominal glyph of each code point, 0 where there is none. E_INVALIDARG for null arrays.
    virtual HRESULT STDMETHODCALLTYPE GetGlyphIndices(const UINT32* codePoints, UINT32 codePointCount,
                                                      UINT16* glyphIndices) = 0;
    /// Hands out the bytes of a table, named by DWRITE_MAKE_OPENTYPE_TAG, which stay until ReleaseFontTable gets
    /// `tableContext`, also where the face has gone. A table that is not there is S_OK, FALSE and null.
    virtual HRESULT STDMETHODCALLTYPE TryGetFontTable(UINT32 openTypeTableTag, const void** tableData,
                                                      UINT32* tableSize, void** tableContext, BOOL* exists) = 0;
    virtual void STDMETHODCALLTYPE ReleaseFontTable(void* tableContext) = 0;
    /// Plays the outlines of a run into `geometrySink`, in units of `emSize`, y down,
    /// the baseline's origin at (0, 0), unhinted.
    ///
    /// `glyphAdvances` null: the face's own; `glyphOffsets` null: none. A right-to-left
    /// run lies left of the origin. A sideways run has its glyphs turned a quarter to
    /// the left and uses vertical metrics. The sink is left open.
    /// E_INVALIDARG: no glyph array, no sink, or sideways and right-to-left at once.
    virtual HRESULT STDMETHODCALLTYPE GetGlyphRunOutline(FLOAT emSize, const UINT16* glyphIndices,
                                                         const FLOAT* glyphAdvances,
                                                         const DWRITE_GLYPH_OFFSET* glyphOffsets, UINT32 glyphCount,
                                                         BOOL isSideways, BOOL isRightToLeft,
                                                         IDWriteGeometrySink* geometrySink) = 0;
};

/// A member of a family; its glyphs are the face's.
struct IDWriteFont : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetFontFamily(IDWriteFontFamily** fontFamily) = 0;
    virtual DWRITE_FONT_WEIGHT STDMETHODCALLTYPE GetWeight() = 0;
    virtual DWRITE_FONT_STRETCH STDMETHODCALLTYPE GetStretch() = 0;
    virtual DWRITE_FONT_STYLE STDMETHODCALLTYPE GetStyle() = 0;
    /// What tells the font from its family, such as "Condensed Bold".
    virtual HRESULT STDMETHODCALLTYPE GetFaceNames(IDWriteLocalizedStrings** names) = 0;
    /// Strings of the font's name table. Always S_OK; a missing string or an unknown
    /// ID gives FALSE and null.
    virtual HRESULT STDMETHODCALLTYPE GetInformationalStrings(DWRITE_INFORMATIONAL_STRING_ID informationalStringID,
                                                              IDWriteLocalizedStrings** informationalStrings,
                                                              BOOL* exists) = 0;
    virtual DWRITE_FONT_SIMULATIONS STDMETHODCALLTYPE GetSimulations() = 0;
    virtual void STDMETHODCALLTYPE GetMetrics(DWRITE_FONT_METRICS* fontMetrics) = 0;
    virtual HRESULT STDMETHODCALLTYPE HasCharacter(UINT32 unicodeValue, BOOL* exists) = 0;
    virtual HRESULT STDMETHODCALLTYPE CreateFontFace(IDWriteFontFace** fontFace) = 0;
};

struct IDWriteFontList : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetFontCollection(IDWriteFontCollection** fontCollection) = 0;
    virtual UINT32 STDMETHODCALLTYPE GetFontCount() = 0;
    /// An index past the end: E_FAIL and null.
    virtual HRESULT STDMETHODCALLTYPE GetFont(UINT32 index, IDWriteFont** font) = 0;
};

/// Fonts that differ only in weight, stretch and style; real ones first, then
/// simulated ones. The most regular font is the first.
struct IDWriteFontFamily : IDWriteFontList {
    virtual HRESULT STDMETHODCALLTYPE GetFamilyNames(IDWriteLocalizedStrings** names) = 0;
    /// The font that comes closest: in stretch, then in style, then in weight. Values
    /// out of range are taken as the nearest that exists.
    virtual HRESULT STDMETHODCALLTYPE GetFirstMatchingFont(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch,
                                                           DWRITE_FONT_STYLE style, IDWriteFont** matchingFont) = 0;
    /// All fonts of the family, the closest first.
    virtual HRESULT STDMETHODCALLTYPE GetMatchingFonts(DWRITE_FONT_WEIGHT weight, DWRITE_FONT_STRETCH stretch,
                                                       DWRITE_FONT_STYLE style, IDWriteFontList** matchingFonts) = 0;
};

/// All families, ordered by name.
struct IDWriteFontCollection : IUnknown {
    virtual UINT32 STDMETHODCALLTYPE GetFontFamilyCount() = 0;
    /// An index past the end: E_FAIL and null.
    virtual HRESULT STDMETHODCALLTYPE GetFontFamily(UINT32 index, IDWriteFontFamily** fontFamily) = 0;
    /// Looks a family up by any of its names, letter case ignored. Always S_OK; an
    /// unknown name gives FALSE and 0xFFFFFFFF.
    virtual HRESULT STDMETHODCALLTYPE FindFamilyName(const WCHAR* familyName, UINT32* index, BOOL* exists) = 0;
    /// The font of the same file, index and simulations as `fontFace`, wherever that came from; DWRITE_E_NOFONT and
    /// null if there is none, and for a foreign face.
    virtual HRESULT STDMETHODCALLTYPE GetFontFromFontFace(IDWriteFontFace* fontFace, IDWriteFont** font) = 0;
};

PLATFORM_UUID(IDWriteLocalizedStrings, "08256209-099a-4b34-b86d-c22b110e7771");
PLATFORM_UUID(IDWriteFontFace, "5f49804d-7024-4d43-bfa9-d25984f53849");
PLATFORM_UUID(IDWriteFont, "acd16696-8c14-4f5d-877e-fe3fc1d32737");
PLATFORM_UUID(IDWriteFontList, "1a0d8438-1d97-4ec1-aef9-a2fb86ed6acb");
PLATFORM_UUID(IDWriteFontFamily, "da20d8ef-812a-4c43-9802-62ec4abd7add");
PLATFORM_UUID(IDWriteFontCollection, "a84cee02-3eea-4eee-a827-87c1a02a0fcc");
