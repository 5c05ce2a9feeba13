#pragma once

#include <dwrite.h>

#include "com/ComObject.h"
#include "format/FormatSettings.h"
#include "lines/TextPipeline.h"

namespace platform {

/// An ellipsis that stands for trimmed text: one run on the line's baseline, without a height of its own.
///
/// Everything is found out when the sign is made, so that any number of threads may measure and draw it.
class CEllipsisSign final : public CHeapObject<IDWriteInlineObject> {
public:
    /// A sign in the font and the locale of `settings`. DWRITE_E_NOFONT if no font is installed.
    static HRESULT make(const FormatSettings& settings, IDWriteInlineObject** sign);

    HRESULT STDMETHODCALLTYPE Draw(void* context, IDWriteTextRenderer* renderer, FLOAT originX, FLOAT originY,
                                   BOOL isSideways, BOOL isRightToLeft, IUnknown* effect) override;
    HRESULT STDMETHODCALLTYPE GetMetrics(DWRITE_INLINE_OBJECT_METRICS* metrics) override;
    HRESULT STDMETHODCALLTYPE GetOverhangMetrics(DWRITE_OVERHANG_METRICS* overhangs) override;
    HRESULT STDMETHODCALLTYPE GetBreakConditions(DWRITE_BREAK_CONDITION* before,
                                                 DWRITE_BREAK_CONDITION* after) override;

private:
    explicit CEllipsisSign(const FormatSettings& settings);

    HRESULT measure();

    TextPipeline m_pipeline;
    FLOAT m_width = 0.0F;
    DWRITE_OVERHANG_METRICS m_overhang{};
};

} // namespace platform
