#include "format/ParagraphSettings.h"

namespace platform {

namespace {

/// Callers may hand over any number in an enumeration's clothes.
template <class Enumeration>
bool isWithin(Enumeration value, long long first, long long last) noexcept {
    const auto number = static_cast<long long>(value);
    return number >= first && number <= last;
}

template <class Enumeration>
HRESULT setWithin(Enumeration& target, Enumeration value, Enumeration last) noexcept {
    if (!isWithin(value, 0, static_cast<long long>(last))) {
        return E_INVALIDARG;
    }
    target = value;
    return S_OK;
}

} // namespace

HRESULT ParagraphSettings::setTextAlignment(DWRITE_TEXT_ALIGNMENT value) noexcept {
    return setWithin(textAlignment, value, DWRITE_TEXT_ALIGNMENT_JUSTIFIED);
}

HRESULT ParagraphSettings::setParagraphAlignment(DWRITE_PARAGRAPH_ALIGNMENT value) noexcept {
    return setWithin(paragraphAlignment, value, DWRITE_PARAGRAPH_ALIGNMENT_CENTER);
}

HRESULT ParagraphSettings::setWordWrapping(DWRITE_WORD_WRAPPING value) noexcept {
    return setWithin(wordWrapping, value, DWRITE_WORD_WRAPPING_CHARACTER);
}

HRESULT ParagraphSettings::setReadingDirection(DWRITE_READING_DIRECTION value) noexcept {
    return setWithin(readingDirection, value, DWRITE_READING_DIRECTION_BOTTOM_TO_TOP);
}

HRESULT ParagraphSettings::setFlowDirection(DWRITE_FLOW_DIRECTION value) noexcept {
    return setWithin(flowDirection, value, DWRITE_FLOW_DIRECTION_RIGHT_TO_LEFT);
}

HRESULT ParagraphSettings::setIncrementalTabStop(FLOAT value) noexcept {
    if (value <= 0.0F) {
        return E_INVALIDARG;
    }
    incrementalTabStop = value;
    return S_OK;
}

HRESULT ParagraphSettings::setTrimming(const DWRITE_TRIMMING* value, IDWriteInlineObject* sign) noexcept {
    if (value == nullptr || !isWithin(value->granularity, 0, DWRITE_TRIMMING_GRANULARITY_WORD)) {
        return E_INVALIDARG;
    }
    trimming = *value;
    trimmingSign = sign;
    return S_OK;
}

HRESULT ParagraphSettings::setLineSpacing(DWRITE_LINE_SPACING_METHOD method, FLOAT spacing, FLOAT baseline) noexcept {
    if (spacing < 0.0F || !isWithin(method, 0, DWRITE_LINE_SPACING_METHOD_PROPORTIONAL)) {
        return E_INVALIDARG;
    }
    lineSpacingMethod = method;
    lineSpacing = spacing;
    lineBaseline = baseline;
    return S_OK;
}

HRESULT ParagraphSettings::setVerticalGlyphOrientation(DWRITE_VERTICAL_GLYPH_ORIENTATION value) noexcept {
    return setWithin(verticalGlyphOrientation, value, DWRITE_VERTICAL_GLYPH_ORIENTATION_STACKED);
}

HRESULT ParagraphSettings::setOpticalAlignment(DWRITE_OPTICAL_ALIGNMENT value) noexcept {
    return setWithin(opticalAlignment, value, DWRITE_OPTICAL_ALIGNMENT_NO_SIDE_BEARINGS);
}

bool isValidWeight(DWRITE_FONT_WEIGHT value) noexcept {
    return isWithin(value, 0, 998);
}

bool isValidStyle(DWRITE_FONT_STYLE value) noexcept {
    return isWithin(value, 0, DWRITE_FONT_STYLE_ITALIC);
}

bool isValidStretch(DWRITE_FONT_STRETCH value) noexcept {
    return isWithin(value, DWRITE_FONT_STRETCH_ULTRA_CONDENSED, DWRITE_FONT_STRETCH_ULTRA_EXPANDED);
}

bool isValidSize(FLOAT value) noexcept {
    return !(value <= 0.0F);
}

} // namespace platform
