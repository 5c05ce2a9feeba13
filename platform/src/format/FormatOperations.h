#pragma once

#include <dwrite_2.h>

#include "com/ComObject.h"
#include "format/FormatSettings.h"

namespace platform {

/// The operations of a text format for every interface that has them. Where the settings live, and what depends on
/// them, is for the derived class to say.
template <class Interface>
class FormatOperations : public Interface {
public:
    /// __uuidof means the interface.
    using value_type = Interface;

    HRESULT STDMETHODCALLTYPE SetTextAlignment(DWRITE_TEXT_ALIGNMENT value) final {
        return changed(PlacingChange, paragraph().setTextAlignment(value));
    }
    HRESULT STDMETHODCALLTYPE SetParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT value) final {
        return changed(PlacingChange, paragraph().setParagraphAlignment(value));
    }
    HRESULT STDMETHODCALLTYPE SetWordWrapping(DWRITE_WORD_WRAPPING value) final {
        return changed(BreakingChange, paragraph().setWordWrapping(value));
    }
    HRESULT STDMETHODCALLTYPE SetReadingDirection(DWRITE_READING_DIRECTION value) final {
        return changed(ShapingChange, paragraph().setReadingDirection(value));
    }
    HRESULT STDMETHODCALLTYPE SetFlowDirection(DWRITE_FLOW_DIRECTION value) final {
        return changed(PlacingChange, paragraph().setFlowDirection(value));
    }
    HRESULT STDMETHODCALLTYPE SetIncrementalTabStop(FLOAT value) final {
        return changed(BreakingChange, paragraph().setIncrementalTabStop(value));
    }
    HRESULT STDMETHODCALLTYPE SetTrimming(const DWRITE_TRIMMING* value, IDWriteInlineObject* sign) final {
        return changed(BreakingChange, paragraph().setTrimming(value, sign));
    }
    HRESULT STDMETHODCALLTYPE SetLineSpacing(DWRITE_LINE_SPACING_METHOD method, FLOAT spacing, FLOAT baseline) final {
        return changed(BreakingChange, paragraph().setLineSpacing(method, spacing, baseline));
    }

    DWRITE_TEXT_ALIGNMENT STDMETHODCALLTYPE GetTextAlignment() final { return paragraph().textAlignment; }
    DWRITE_PARAGRAPH_ALIGNMENT STDMETHODCALLTYPE GetParagraphAlignment() final {
        return paragraph().paragraphAlignment;
    }
    DWRITE_WORD_WRAPPING STDMETHODCALLTYPE GetWordWrapping() final { return paragraph().wordWrapping; }
    DWRITE_READING_DIRECTION STDMETHODCALLTYPE GetReadingDirection() final { return paragraph().readingDirection; }
    DWRITE_FLOW_DIRECTION STDMETHODCALLTYPE GetFlowDirection() final { return paragraph().flowDirection; }
    FLOAT STDMETHODCALLTYPE GetIncrementalTabStop() final { return paragraph().incrementalTabStop; }
    HRESULT STDMETHODCALLTYPE GetTrimming(DWRITE_TRIMMING* value, IDWriteInlineObject** sign) final {
        *value = paragraph().trimming;
        handOutOrNull(paragraph().trimmingSign, sign);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetLineSpacing(DWRITE_LINE_SPACING_METHOD* method, FLOAT* spacing,
                                             FLOAT* baseline) final {
        *method = paragraph().lineSpacingMethod;
        *spacing = paragraph().lineSpacing;
        *baseline = paragraph().lineBaseline;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetFontCollection(IDWriteFontCollection** collection) final {
        handOutOrNull(font().collection, collection);
        return S_OK;
    }
    UINT32 STDMETHODCALLTYPE GetFontFamilyNameLength() final {
        return static_cast<UINT32>(textOf(font().family).size());
    }
    HRESULT STDMETHODCALLTYPE GetFontFamilyName(WCHAR* name, UINT32 size) final {
        return copyName(textOf(font().family), name, size);
    }
    DWRITE_FONT_WEIGHT STDMETHODCALLTYPE GetFontWeight() final { return font().weight; }
    DWRITE_FONT_STYLE STDMETHODCALLTYPE GetFontStyle() final { return font().style; }
    DWRITE_FONT_STRETCH STDMETHODCALLTYPE GetFontStretch() final { return font().stretch; }
    FLOAT STDMETHODCALLTYPE GetFontSize() final { return font().size; }
    UINT32 STDMETHODCALLTYPE GetLocaleNameLength() final { return static_cast<UINT32>(textOf(font().locale).size()); }
    HRESULT STDMETHODCALLTYPE GetLocaleName(WCHAR* name, UINT32 size) final {
        return copyName(textOf(font().locale), name, size);
    }

protected:
    /// The earliest work that a changed setting undoes.
    enum Change { ShapingChange, BreakingChange, PlacingChange };

    virtual ParagraphSettings& paragraph() noexcept = 0;
    virtual const FontSettings& font() const noexcept = 0;
    virtual void settingsChanged(Change) noexcept {}

    ~FormatOperations() = default;

    HRESULT changed(Change change, HRESULT result) noexcept {
        if (SUCCEEDED(result)) {
            settingsChanged(change);
        }
        return result;
    }
};

/// The operations of a text format of the second generation.
class LaterFormatOperations : public FormatOperations<IDWriteTextFormat1> {
public:
    HRESULT STDMETHODCALLTYPE SetVerticalGlyphOrientation(DWRITE_VERTICAL_GLYPH_ORIENTATION value) final {
        return paragraph().setVerticalGlyphOrientation(value);
    }
    HRESULT STDMETHODCALLTYPE SetLastLineWrapping(BOOL value) final {
        paragraph().lastLineWrapping = value != FALSE;
        return changed(BreakingChange, S_OK);
    }
    HRESULT STDMETHODCALLTYPE SetOpticalAlignment(DWRITE_OPTICAL_ALIGNMENT value) final {
        return changed(PlacingChange, paragraph().setOpticalAlignment(value));
    }
    HRESULT STDMETHODCALLTYPE SetFontFallback(IDWriteFontFallback* value) final {
        paragraph().fontFallback = value;
        return changed(ShapingChange, S_OK);
    }

    DWRITE_VERTICAL_GLYPH_ORIENTATION STDMETHODCALLTYPE GetVerticalGlyphOrientation() final {
        return paragraph().verticalGlyphOrientation;
    }
    BOOL STDMETHODCALLTYPE GetLastLineWrapping() final { return paragraph().lastLineWrapping ? TRUE : FALSE; }
    DWRITE_OPTICAL_ALIGNMENT STDMETHODCALLTYPE GetOpticalAlignment() final { return paragraph().opticalAlignment; }
    HRESULT STDMETHODCALLTYPE GetFontFallback(IDWriteFontFallback** value) final {
        handOutOrNull(paragraph().fontFallback, value);
        return S_OK;
    }

protected:
    ~LaterFormatOperations() = default;
};

} // namespace platform
