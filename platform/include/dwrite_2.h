#pragma once

#include <dwrite_1.h>

// The interfaces are the platform's: no destructors, and operations of one name in derived ones.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

/// A renderer that can turn glyphs. A layout asks its renderer for this, and calls these operations instead of those of
/// the same names if it gets it. The lines of a layout are horizontal: every angle is 0.
struct IDWriteTextRenderer1 : IDWriteTextRenderer {
    virtual HRESULT STDMETHODCALLTYPE DrawGlyphRun(void* clientDrawingContext, FLOAT baselineOriginX,
                                                   FLOAT baselineOriginY,
                                                   DWRITE_GLYPH_ORIENTATION_ANGLE orientationAngle,
                                                   DWRITE_MEASURING_MODE measuringMode,
                                                   const DWRITE_GLYPH_RUN* glyphRun,
                                                   const DWRITE_GLYPH_RUN_DESCRIPTION* glyphRunDescription,
                                                   IUnknown* clientDrawingEffect) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrawUnderline(void* clientDrawingContext, FLOAT baselineOriginX,
                                                    FLOAT baselineOriginY,
                                                    DWRITE_GLYPH_ORIENTATION_ANGLE orientationAngle,
                                                    const DWRITE_UNDERLINE* underline,
                                                    IUnknown* clientDrawingEffect) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrawStrikethrough(void* clientDrawingContext, FLOAT baselineOriginX,
                                                        FLOAT baselineOriginY,
                                                        DWRITE_GLYPH_ORIENTATION_ANGLE orientationAngle,
                                                        const DWRITE_STRIKETHROUGH* strikethrough,
                                                        IUnknown* clientDrawingEffect) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrawInlineObject(void* clientDrawingContext, FLOAT originX, FLOAT originY,
                                                       DWRITE_GLYPH_ORIENTATION_ANGLE orientationAngle,
                                                       IDWriteInlineObject* inlineObject, BOOL isSideways,
                                                       BOOL isRightToLeft, IUnknown* clientDrawingEffect) = 0;
};

/// Finds fonts for characters that a wished-for family lacks. Thread-safe.
struct IDWriteFontFallback : IUnknown {
    /// Maps the text from `textPosition` on to one font.
    ///
    /// `analysisSource` is only read (text, locale); no reference of it is taken.
    /// `baseFontCollection` null means the system's; `baseFamilyName` null skips the
    /// base family. Stores how many text positions the result holds for
    /// (1 .. textLength; 0 only for textLength 0), the font with a reference for the
    /// caller, or null where no font covers them, and the scale of the em size.
    /// E_INVALIDARG without a source or for text that is not UTF-16, with length 0,
    /// no font and scale 1.
    virtual HRESULT STDMETHODCALLTYPE MapCharacters(IDWriteTextAnalysisSource* analysisSource, UINT32 textPosition,
                                                    UINT32 textLength, IDWriteFontCollection* baseFontCollection,
                                                    const WCHAR* baseFamilyName, DWRITE_FONT_WEIGHT baseWeight,
                                                    DWRITE_FONT_STYLE baseStyle, DWRITE_FONT_STRETCH baseStretch,
                                                    UINT32* mappedLength, IDWriteFont** mappedFont, FLOAT* scale) = 0;
};

/// What stands at the margins.
enum DWRITE_OPTICAL_ALIGNMENT : INT32 {
    /// The room that fonts leave beside their glyphs.
    DWRITE_OPTICAL_ALIGNMENT_NONE = 0,
    /// The ink of the glyphs.
    DWRITE_OPTICAL_ALIGNMENT_NO_SIDE_BEARINGS = 1
};

/// More of what a layout starts with. Formats answer QueryInterface for it, and so do layouts, whose own settings it
/// then shows.
struct IDWriteTextFormat1 : IDWriteTextFormat {
    /// How glyphs would stand in vertical lines; kept and read back, for lines are horizontal.
    virtual HRESULT STDMETHODCALLTYPE
    SetVerticalGlyphOrientation(DWRITE_VERTICAL_GLYPH_ORIENTATION glyphOrientation) = 0;
    virtual DWRITE_VERTICAL_GLYPH_ORIENTATION STDMETHODCALLTYPE GetVerticalGlyphOrientation() = 0;
    /// Whether the last line that the box is high enough for is wrapped like the others (the default). If not, it holds
    /// all that is left of its paragraph, for trimming to cut. A box of height 0 has no such line.
    virtual HRESULT STDMETHODCALLTYPE SetLastLineWrapping(BOOL isLastLineWrappingEnabled) = 0;
    virtual BOOL STDMETHODCALLTYPE GetLastLineWrapping() = 0;
    /// What aligned and justified lines bring to the margins. Widths and left edges in metrics are then the ink's;
    /// where lines break does not change.
    virtual HRESULT STDMETHODCALLTYPE SetOpticalAlignment(DWRITE_OPTICAL_ALIGNMENT opticalAlignment) = 0;
    virtual DWRITE_OPTICAL_ALIGNMENT STDMETHODCALLTYPE GetOpticalAlignment() = 0;
    /// Who chooses the fonts of all text, the base family's too; null means the system's fallback.
    virtual HRESULT STDMETHODCALLTYPE SetFontFallback(IDWriteFontFallback* fontFallback) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontFallback(IDWriteFontFallback** fontFallback) = 0;
};

struct IDWriteFactory2 : IDWriteFactory1 {
    /// The system's fallback: one object for the process, with a reference for the caller.
    virtual HRESULT STDMETHODCALLTYPE GetSystemFontFallback(IDWriteFontFallback** fontFallback) = 0;
};

PLATFORM_UUID(IDWriteTextRenderer1, "d3e0e934-22a0-427e-aae4-7d9574b59db1");
PLATFORM_UUID(IDWriteTextFormat1, "5f174b49-0d8b-4cfb-8bca-f1cce9d06c67");
PLATFORM_UUID(IDWriteFontFallback, "efa008f9-f7a1-48bf-b05c-f224713cc0ff");
PLATFORM_UUID(IDWriteFactory2, "0439fc60-ca44-4994-8dee-3a9af7b732ec");

#pragma GCC diagnostic pop
