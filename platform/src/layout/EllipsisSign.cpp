#include "layout/EllipsisSign.h"

#include "answers/Metrics.h"
#include "answers/TextDrawing.h"

namespace platform {

namespace {

constexpr WCHAR ellipsis = 0x2026;

/// Lines without height stand with their baseline at the top of their box.
FormatSettings settingsOfLine(const FormatSettings& format) {
    FormatSettings settings;
    settings.font = format.font;
    settings.paragraph.wordWrapping = DWRITE_WORD_WRAPPING_NO_WRAP;
    settings.paragraph.lineSpacingMethod = DWRITE_LINE_SPACING_METHOD_UNIFORM;
    settings.paragraph.fontFallback = format.paragraph.fontFallback;
    return settings;
}

} // namespace

HRESULT CEllipsisSign::make(const FormatSettings& settings, IDWriteInlineObject** sign) {
    const Reference<CEllipsisSign> made(new CEllipsisSign(settings), false);
    const HRESULT result = made->measure();
    if (SUCCEEDED(result)) {
        handOut(*made, sign);
    }
    return result;
}

CEllipsisSign::CEllipsisSign(const FormatSettings& settings)
    : m_pipeline(&ellipsis, 1, settingsOfLine(settings), Box()) {}

HRESULT CEllipsisSign::measure() {
    if (const HRESULT result = m_pipeline.finish(); FAILED(result)) {
        return result;
    }
    m_width = textMetrics(m_pipeline).width;
    m_overhang = overhangMetrics(m_pipeline);
    m_overhang.right -= m_width;
    return S_OK;
}

HRESULT CEllipsisSign::Draw(void* context, IDWriteTextRenderer* renderer, FLOAT originX, FLOAT originY, BOOL, BOOL,
                            IUnknown* effect) {
    if (renderer == nullptr) {
        return E_INVALIDARG;
    }
    return guarded([&] { return drawLayout(m_pipeline, context, *renderer, originX, originY, effect); });
}

HRESULT CEllipsisSign::GetMetrics(DWRITE_INLINE_OBJECT_METRICS* metrics) {
    *metrics = {m_width, 0.0F, 0.0F, FALSE};
    return S_OK;
}

HRESULT CEllipsisSign::GetOverhangMetrics(DWRITE_OVERHANG_METRICS* overhangs) {
    *overhangs = m_overhang;
    return S_OK;
}

HRESULT CEllipsisSign::GetBreakConditions(DWRITE_BREAK_CONDITION* before, DWRITE_BREAK_CONDITION* after) {
    *before = DWRITE_BREAK_CONDITION_NEUTRAL;
    *after = DWRITE_BREAK_CONDITION_NEUTRAL;
    return S_OK;
}

} // namespace platform
