#pragma once

// The second generation of the interfaces.

#include <dwrite.h>

/// How glyphs stand in vertical text.
enum DWRITE_VERTICAL_GLYPH_ORIENTATION : INT32 {
    DWRITE_VERTICAL_GLYPH_ORIENTATION_DEFAULT = 0,
    DWRITE_VERTICAL_GLYPH_ORIENTATION_STACKED = 1
};

/// By how much glyphs are turned clockwise from standing upright.
enum DWRITE_GLYPH_ORIENTATION_ANGLE : INT32 {
    DWRITE_GLYPH_ORIENTATION_ANGLE_0_DEGREES = 0,
    DWRITE_GLYPH_ORIENTATION_ANGLE_90_DEGREES = 1,
    DWRITE_GLYPH_ORIENTATION_ANGLE_180_DEGREES = 2,
    DWRITE_GLYPH_ORIENTATION_ANGLE_270_DEGREES = 3
};

struct IDWriteFactory1 : IDWriteFactory {};

struct IDWriteTextAnalysisSource1 : IDWriteTextAnalysisSource {
    /// Orientation and bidi level at a position, and for how many positions they hold.
    virtual HRESULT STDMETHODCALLTYPE GetVerticalGlyphOrientation(UINT32 textPosition, UINT32* textLength,
                                                                  DWRITE_VERTICAL_GLYPH_ORIENTATION* glyphOrientation,
                                                                  UINT8* bidiLevel) = 0;
};

/// Every layout answers QueryInterface for this.
struct IDWriteTextLayout1 : IDWriteTextLayout {
    /// Whether pairs of letters are kerned; they are unless this says otherwise.
    virtual HRESULT STDMETHODCALLTYPE SetPairKerning(BOOL isPairKerningEnabled, DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPairKerning(UINT32 currentPosition, BOOL* isPairKerningEnabled,
                                                     DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    /// Room before and after every cluster in reading order, which may be negative. No cluster gets narrower than
    /// `minimumAdvanceWidth`, and room that is added comes on top of it. E_INVALIDARG: a minimum below 0. Tabs,
    /// newlines, controls and inline objects stay as they are.
    virtual HRESULT STDMETHODCALLTYPE SetCharacterSpacing(FLOAT leadingSpacing, FLOAT trailingSpacing,
                                                          FLOAT minimumAdvanceWidth, DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCharacterSpacing(UINT32 currentPosition, FLOAT* leadingSpacing,
                                                          FLOAT* trailingSpacing, FLOAT* minimumAdvanceWidth,
                                                          DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
};

PLATFORM_UUID(IDWriteFactory1, "30572f99-dac6-41db-a16e-0486307e606a");
PLATFORM_UUID(IDWriteTextAnalysisSource1, "639cfad8-0fb4-4b21-a58a-067920120009");
PLATFORM_UUID(IDWriteTextLayout1, "9064d822-80a7-465c-a986-df65f78b8feb");
