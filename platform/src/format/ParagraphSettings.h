#pragma once

#include <dwrite_2.h>

#include "com/Reference.h"
#include "format/Name.h"

namespace platform {

/// The settings of a whole paragraph, with the rules for what they accept. A text format holds one, and every layout
/// made with the format a copy. A refused value leaves everything as it was.
struct ParagraphSettings {
    DWRITE_TEXT_ALIGNMENT textAlignment = DWRITE_TEXT_ALIGNMENT_LEADING;
    DWRITE_PARAGRAPH_ALIGNMENT paragraphAlignment = DWRITE_PARAGRAPH_ALIGNMENT_NEAR;
    DWRITE_WORD_WRAPPING wordWrapping = DWRITE_WORD_WRAPPING_WRAP;
    DWRITE_READING_DIRECTION readingDirection = DWRITE_READING_DIRECTION_LEFT_TO_RIGHT;
    DWRITE_FLOW_DIRECTION flowDirection = DWRITE_FLOW_DIRECTION_TOP_TO_BOTTOM;
    FLOAT incrementalTabStop = 0.0F;
    DWRITE_LINE_SPACING_METHOD lineSpacingMethod = DWRITE_LINE_SPACING_METHOD_DEFAULT;
    FLOAT lineSpacing = 0.0F;
    FLOAT lineBaseline = 0.0F;
    DWRITE_TRIMMING trimming{};
    Reference<IDWriteInlineObject> trimmingSign;
    DWRITE_VERTICAL_GLYPH_ORIENTATION verticalGlyphOrientation = DWRITE_VERTICAL_GLYPH_ORIENTATION_DEFAULT;
    bool lastLineWrapping = true;
    DWRITE_OPTICAL_ALIGNMENT opticalAlignment = DWRITE_OPTICAL_ALIGNMENT_NONE;
    /// Null means the system's.
    Reference<IDWriteFontFallback> fontFallback;

    HRESULT setTextAlignment(DWRITE_TEXT_ALIGNMENT value) noexcept;
    HRESULT setParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT value) noexcept;
    HRESULT setWordWrapping(DWRITE_WORD_WRAPPING value) noexcept;
    HRESULT setReadingDirection(DWRITE_READING_DIRECTION value) noexcept;
    HRESULT setFlowDirection(DWRITE_FLOW_DIRECTION value) noexcept;
    HRESULT setIncrementalTabStop(FLOAT value) noexcept;
    HRESULT setTrimming(const DWRITE_TRIMMING* value, IDWriteInlineObject* sign) noexcept;
    HRESULT setLineSpacing(DWRITE_LINE_SPACING_METHOD method, FLOAT spacing, FLOAT baseline) noexcept;
    HRESULT setVerticalGlyphOrientation(DWRITE_VERTICAL_GLYPH_ORIENTATION value) noexcept;
    HRESULT setOpticalAlignment(DWRITE_OPTICAL_ALIGNMENT value) noexcept;

    /// Whether lines are read from right to left, so that they start at the right edge.
    [[nodiscard]] bool rightToLeft() const noexcept {
        return readingDirection == DWRITE_READING_DIRECTION_RIGHT_TO_LEFT;
    }
};

/// The font of a whole format: what its ranges start with.
struct FontSettings {
    Reference<IDWriteFontCollection> collection;
    Name family;
    Name locale;
    DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL;
    DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL;
    DWRITE_FONT_STRETCH stretch = DWRITE_FONT_STRETCH_NORMAL;
    FLOAT size = 0.0F;
};

/// What a font request may hold. Sizes that are not numbers pass: they come back as metrics that are not numbers.
bool isValidWeight(DWRITE_FONT_WEIGHT value) noexcept;
bool isValidStyle(DWRITE_FONT_STYLE value) noexcept;
bool isValidStretch(DWRITE_FONT_STRETCH value) noexcept;
bool isValidSize(FLOAT value) noexcept;

} // namespace platform
