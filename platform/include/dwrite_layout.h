#pragma once

// Text formats, text layouts, and what callers implement for them.
//
// Lengths are device-independent units, y down. Text positions count UTF-16 units.
// A format or layout belongs to one thread at a time; different ones may be used by
// different threads at once.

#include <dwrite_font.h>

// The interfaces are the platform's: no destructors, and operations of one name in derived ones.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

struct IDWriteInlineObject;
struct IDWriteTextRenderer;

/// Features for a stretch of text. Fill it before handing it to a layout.
struct IDWriteTypography : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE AddFontFeature(DWRITE_FONT_FEATURE fontFeature) = 0;
    virtual UINT32 STDMETHODCALLTYPE GetFontFeatureCount() = 0;
    /// E_INVALIDARG past the end.
    virtual HRESULT STDMETHODCALLTYPE GetFontFeature(UINT32 fontFeatureIndex, DWRITE_FONT_FEATURE* fontFeature) = 0;
};

/// Where a renderer wants positions to be snapped. Implemented by the caller.
struct IDWritePixelSnapping : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE IsPixelSnappingDisabled(void* clientDrawingContext, BOOL* isDisabled) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetCurrentTransform(void* clientDrawingContext, DWRITE_MATRIX* transform) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetPixelsPerDip(void* clientDrawingContext, FLOAT* pixelsPerDip) = 0;
};

/// Receives what a layout draws. Implemented by the caller; a failing result ends
/// the drawing and becomes the result of Draw. Arrays and strings live for the call.
struct IDWriteTextRenderer : IDWritePixelSnapping {
    virtual HRESULT STDMETHODCALLTYPE DrawGlyphRun(void* clientDrawingContext, FLOAT baselineOriginX,
                                                   FLOAT baselineOriginY, DWRITE_MEASURING_MODE measuringMode,
                                                   const DWRITE_GLYPH_RUN* glyphRun,
                                                   const DWRITE_GLYPH_RUN_DESCRIPTION* glyphRunDescription,
                                                   IUnknown* clientDrawingEffect) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrawUnderline(void* clientDrawingContext, FLOAT baselineOriginX,
                                                    FLOAT baselineOriginY, const DWRITE_UNDERLINE* underline,
                                                    IUnknown* clientDrawingEffect) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrawStrikethrough(void* clientDrawingContext, FLOAT baselineOriginX,
                                                        FLOAT baselineOriginY,
                                                        const DWRITE_STRIKETHROUGH* strikethrough,
                                                        IUnknown* clientDrawingEffect) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrawInlineObject(void* clientDrawingContext, FLOAT originX, FLOAT originY,
                                                       IDWriteInlineObject* inlineObject, BOOL isSideways,
                                                       BOOL isRightToLeft, IUnknown* clientDrawingEffect) = 0;
};

/// Something that stands in a line in place of text. Implemented by the caller.
struct IDWriteInlineObject : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Draw(void* clientDrawingContext, IDWriteTextRenderer* renderer, FLOAT originX,
                                           FLOAT originY, BOOL isSideways, BOOL isRightToLeft,
                                           IUnknown* clientDrawingEffect) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetMetrics(DWRITE_INLINE_OBJECT_METRICS* metrics) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOverhangMetrics(DWRITE_OVERHANG_METRICS* overhangs) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetBreakConditions(DWRITE_BREAK_CONDITION* breakConditionBefore,
                                                         DWRITE_BREAK_CONDITION* breakConditionAfter) = 0;
};

/// The attributes a layout starts with. A layout copies them: changing the format
/// later changes no layout. Setters answer E_INVALIDARG, and keep the old value, for
/// values outside their range.
struct IDWriteTextFormat : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE SetTextAlignment(DWRITE_TEXT_ALIGNMENT textAlignment) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT paragraphAlignment) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetWordWrapping(DWRITE_WORD_WRAPPING wordWrapping) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetReadingDirection(DWRITE_READING_DIRECTION readingDirection) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFlowDirection(DWRITE_FLOW_DIRECTION flowDirection) = 0;
    /// Distance of the tab stops; greater than 0. Starts as four times the font size.
    virtual HRESULT STDMETHODCALLTYPE SetIncrementalTabStop(FLOAT incrementalTabStop) = 0;
    /// How a line that does not fit is cut; `trimmingSign` (null: none) stands at the cut.
    virtual HRESULT STDMETHODCALLTYPE SetTrimming(const DWRITE_TRIMMING* trimmingOptions,
                                                  IDWriteInlineObject* trimmingSign) = 0;
    /// UNIFORM: every line has this height and baseline; PROPORTIONAL: both are factors.
    virtual HRESULT STDMETHODCALLTYPE SetLineSpacing(DWRITE_LINE_SPACING_METHOD lineSpacingMethod, FLOAT lineSpacing,
                                                     FLOAT baseline) = 0;
    virtual DWRITE_TEXT_ALIGNMENT STDMETHODCALLTYPE GetTextAlignment() = 0;
    virtual DWRITE_PARAGRAPH_ALIGNMENT STDMETHODCALLTYPE GetParagraphAlignment() = 0;
    virtual DWRITE_WORD_WRAPPING STDMETHODCALLTYPE GetWordWrapping() = 0;
    virtual DWRITE_READING_DIRECTION STDMETHODCALLTYPE GetReadingDirection() = 0;
    virtual DWRITE_FLOW_DIRECTION STDMETHODCALLTYPE GetFlowDirection() = 0;
    virtual FLOAT STDMETHODCALLTYPE GetIncrementalTabStop() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTrimming(DWRITE_TRIMMING* trimmingOptions,
                                                  IDWriteInlineObject** trimmingSign) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLineSpacing(DWRITE_LINE_SPACING_METHOD* lineSpacingMethod, FLOAT* lineSpacing,
                                                     FLOAT* baseline) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontCollection(IDWriteFontCollection** fontCollection) = 0;
    /// Lengths leave out the terminator; buffers must have room for it:
    /// E_NOT_SUFFICIENT_BUFFER otherwise.
    virtual UINT32 STDMETHODCALLTYPE GetFontFamilyNameLength() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontFamilyName(WCHAR* fontFamilyName, UINT32 nameSize) = 0;
    virtual DWRITE_FONT_WEIGHT STDMETHODCALLTYPE GetFontWeight() = 0;
    virtual DWRITE_FONT_STYLE STDMETHODCALLTYPE GetFontStyle() = 0;
    virtual DWRITE_FONT_STRETCH STDMETHODCALLTYPE GetFontStretch() = 0;
    virtual FLOAT STDMETHODCALLTYPE GetFontSize() = 0;
    virtual UINT32 STDMETHODCALLTYPE GetLocaleNameLength() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLocaleName(WCHAR* localeName, UINT32 nameSize) = 0;
};

/// A text set in a box: measured, asked and drawn.
///
/// Setters only store; the work happens at the first question. A range reaches from
/// its start as far as it says, also past the text's end; E_INVALIDARG when start +
/// length exceeds 2^32 - 1. Getters with a position also give the range around it in
/// which nothing changes (null: not wanted). Objects that are set are kept by reference.
struct IDWriteTextLayout : IDWriteTextFormat {
    using IDWriteTextFormat::GetFontCollection;
    using IDWriteTextFormat::GetFontFamilyName;
    using IDWriteTextFormat::GetFontFamilyNameLength;
    using IDWriteTextFormat::GetFontSize;
    using IDWriteTextFormat::GetFontStretch;
    using IDWriteTextFormat::GetFontStyle;
    using IDWriteTextFormat::GetFontWeight;
    using IDWriteTextFormat::GetLocaleName;
    using IDWriteTextFormat::GetLocaleNameLength;

    /// 0 sets no limit; negative: E_INVALIDARG.
    virtual HRESULT STDMETHODCALLTYPE SetMaxWidth(FLOAT maxWidth) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetMaxHeight(FLOAT maxHeight) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontCollection(IDWriteFontCollection* fontCollection,
                                                        DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontFamilyName(const WCHAR* fontFamilyName, DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontWeight(DWRITE_FONT_WEIGHT fontWeight, DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontStyle(DWRITE_FONT_STYLE fontStyle, DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontStretch(DWRITE_FONT_STRETCH fontStretch, DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetFontSize(FLOAT fontSize, DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetUnderline(BOOL hasUnderline, DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetStrikethrough(BOOL hasStrikethrough, DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetDrawingEffect(IUnknown* drawingEffect, DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetInlineObject(IDWriteInlineObject* inlineObject,
                                                      DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetTypography(IDWriteTypography* typography, DWRITE_TEXT_RANGE textRange) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetLocaleName(const WCHAR* localeName, DWRITE_TEXT_RANGE textRange) = 0;
    virtual FLOAT STDMETHODCALLTYPE GetMaxWidth() = 0;
    virtual FLOAT STDMETHODCALLTYPE GetMaxHeight() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontCollection(UINT32 currentPosition, IDWriteFontCollection** fontCollection,
                                                        DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontFamilyNameLength(UINT32 currentPosition, UINT32* nameLength,
                                                              DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontFamilyName(UINT32 currentPosition, WCHAR* fontFamilyName, UINT32 nameSize,
                                                        DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontWeight(UINT32 currentPosition, DWRITE_FONT_WEIGHT* fontWeight,
                                                    DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontStyle(UINT32 currentPosition, DWRITE_FONT_STYLE* fontStyle,
                                                   DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontStretch(UINT32 currentPosition, DWRITE_FONT_STRETCH* fontStretch,
                                                     DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFontSize(UINT32 currentPosition, FLOAT* fontSize,
                                                  DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetUnderline(UINT32 currentPosition, BOOL* hasUnderline,
                                                   DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetStrikethrough(UINT32 currentPosition, BOOL* hasStrikethrough,
                                                       DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDrawingEffect(UINT32 currentPosition, IUnknown** drawingEffect,
                                                       DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetInlineObject(UINT32 currentPosition, IDWriteInlineObject** inlineObject,
                                                      DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetTypography(UINT32 currentPosition, IDWriteTypography** typography,
                                                    DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLocaleNameLength(UINT32 currentPosition, UINT32* nameLength,
                                                          DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32 currentPosition, WCHAR* localeName, UINT32 nameSize,
                                                    DWRITE_TEXT_RANGE* textRange = nullptr) = 0;
    /// Hands the layout to `renderer` with its origin (top left of the box) at the
    /// point given: all glyph runs, then inline objects, underlines, strikethroughs.
    virtual HRESULT STDMETHODCALLTYPE Draw(void* clientDrawingContext, IDWriteTextRenderer* renderer, FLOAT originX,
                                           FLOAT originY) = 0;
    /// The lines from the top. The count is always stored; E_NOT_SUFFICIENT_BUFFER when
    /// there are more lines than room, the first of which are filled in.
    virtual HRESULT STDMETHODCALLTYPE GetLineMetrics(DWRITE_LINE_METRICS* lineMetrics, UINT32 maxLineCount,
                                                     UINT32* actualLineCount) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetMetrics(DWRITE_TEXT_METRICS* textMetrics) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetOverhangMetrics(DWRITE_OVERHANG_METRICS* overhangs) = 0;
    /// The clusters in logical order; buffer rule as for lines.
    virtual HRESULT STDMETHODCALLTYPE GetClusterMetrics(DWRITE_CLUSTER_METRICS* clusterMetrics, UINT32 maxClusterCount,
                                                        UINT32* actualClusterCount) = 0;
    /// The narrowest box in which no word is broken apart.
    virtual HRESULT STDMETHODCALLTYPE DetermineMinWidth(FLOAT* minWidth) = 0;
    virtual HRESULT STDMETHODCALLTYPE HitTestPoint(FLOAT pointX, FLOAT pointY, BOOL* isTrailingHit, BOOL* isInside,
                                                   DWRITE_HIT_TEST_METRICS* hitTestMetrics) = 0;
    virtual HRESULT STDMETHODCALLTYPE HitTestTextPosition(UINT32 textPosition, BOOL isTrailingHit, FLOAT* pointX,
                                                          FLOAT* pointY, DWRITE_HIT_TEST_METRICS* hitTestMetrics) = 0;
    /// The boxes of a stretch of text, one per line and direction; buffer rule as for lines.
    virtual HRESULT STDMETHODCALLTYPE HitTestTextRange(UINT32 textPosition, UINT32 textLength, FLOAT originX,
                                                       FLOAT originY, DWRITE_HIT_TEST_METRICS* hitTestMetrics,
                                                       UINT32 maxHitTestMetricsCount,
                                                       UINT32* actualHitTestMetricsCount) = 0;
};

/// How digits are to be replaced. Only ever handed through by an analysis source.
struct IDWriteNumberSubstitution : IUnknown {};

/// Text for analysis. Implemented by the caller and only read.
struct IDWriteTextAnalysisSource : IUnknown {
    /// A stretch of text that starts at `textPosition`; null and 0 at the end.
    virtual HRESULT STDMETHODCALLTYPE GetTextAtPosition(UINT32 textPosition, const WCHAR** textString,
                                                        UINT32* textLength) = 0;
    /// A stretch of text that ends before `textPosition`; null and 0 at the start.
    virtual HRESULT STDMETHODCALLTYPE GetTextBeforePosition(UINT32 textPosition, const WCHAR** textString,
                                                            UINT32* textLength) = 0;
    virtual DWRITE_READING_DIRECTION STDMETHODCALLTYPE GetParagraphReadingDirection() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetLocaleName(UINT32 textPosition, UINT32* textLength,
                                                    const WCHAR** localeName) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetNumberSubstitution(UINT32 textPosition, UINT32* textLength,
                                                            IDWriteNumberSubstitution** numberSubstitution) = 0;
};

PLATFORM_UUID(IDWriteTypography, "55f1112b-1dc2-4b3c-9541-f46894ed85b6");
PLATFORM_UUID(IDWritePixelSnapping, "eaf3a2da-ecf4-4d24-b644-b34f6842024b");
PLATFORM_UUID(IDWriteTextRenderer, "ef8a8135-5cc6-45fe-8825-c5a0724eb819");
PLATFORM_UUID(IDWriteInlineObject, "8339fde3-106f-47ab-8373-1c6295eb10b3");
PLATFORM_UUID(IDWriteTextFormat, "9c906818-31d7-4fd3-a151-7c5e225db55a");
PLATFORM_UUID(IDWriteTextLayout, "53737037-6d14-410b-9bfe-0b182bb70961");
PLATFORM_UUID(IDWriteNumberSubstitution, "14885cc9-bab0-4f90-b6ed-5c366a2cd03d");
PLATFORM_UUID(IDWriteTextAnalysisSource, "688e1a58-5094-47c8-adc8-fbcea60ae92b");

#pragma GCC diagnostic pop
