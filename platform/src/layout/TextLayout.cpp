#include "layout/TextLayout.h"

#include "answers/HitTesting.h"
#include "answers/Metrics.h"
#include "answers/TextDrawing.h"

namespace platform {

CTextLayout::CTextLayout(const WCHAR* text, UINT32 length, const FormatSettings& settings, const Box& box)
    : m_pipeline(text, length, settings, box), m_view(*this) {}

HRESULT CTextLayout::QueryInterface(REFIID riid, void** object) {
    if (riid == formatSettingsId) {
        *object = const_cast<FormatSettings*>(&m_pipeline.format());
        return S_OK;
    }
    if (riid == __uuidof(IDWriteTextFormat) || riid == __uuidof(IDWriteTextFormat1)) {
        AddRef();
        *object = static_cast<IDWriteTextFormat1*>(&m_view);
        return S_OK;
    }
    return CHeapObject::QueryInterface(riid, object);
}

void CTextLayout::redo(int change) noexcept {
    switch (change) {
    case ShapingChange:
        m_pipeline.redo(TextPipeline::Stage::Shaping);
        break;
    case BreakingChange:
        m_pipeline.redo(TextPipeline::Stage::Breaking);
        break;
    default:
        m_pipeline.redo(TextPipeline::Stage::Placing);
        break;
    }
}

HRESULT CTextLayout::SetMaxWidth(FLOAT maxWidth) {
    if (maxWidth < 0.0F) {
        return E_INVALIDARG;
    }
    m_pipeline.box().width = maxWidth;
    m_pipeline.redo(TextPipeline::Stage::Breaking);
    return S_OK;
}

HRESULT CTextLayout::SetMaxHeight(FLOAT maxHeight) {
    if (maxHeight < 0.0F) {
        return E_INVALIDARG;
    }
    m_pipeline.box().height = maxHeight;
    m_pipeline.redo(paragraph().lastLineWrapping ? TextPipeline::Stage::Placing : TextPipeline::Stage::Breaking);
    return S_OK;
}

FLOAT CTextLayout::GetMaxWidth() {
    return m_pipeline.box().width;
}

FLOAT CTextLayout::GetMaxHeight() {
    return m_pipeline.box().height;
}

template <class Answer>
HRESULT CTextLayout::finished(Answer answer) {
    return guarded([&] {
        const HRESULT result = m_pipeline.finish();
        return FAILED(result) ? result : answer();
    });
}

HRESULT CTextLayout::Draw(void* context, IDWriteTextRenderer* renderer, FLOAT originX, FLOAT originY) {
    if (renderer == nullptr) {
        return E_INVALIDARG;
    }
    return finished([&] { return drawLayout(m_pipeline, context, *renderer, originX, originY); });
}

HRESULT CTextLayout::GetLineMetrics(DWRITE_LINE_METRICS* metrics, UINT32 maxCount, UINT32* count) {
    return finished([&] { return lineMetrics(m_pipeline, metrics, maxCount, *count); });
}

HRESULT CTextLayout::GetMetrics(DWRITE_TEXT_METRICS* metrics) {
    return finished([&] {
        *metrics = textMetrics(m_pipeline);
        return S_OK;
    });
}

HRESULT CTextLayout::GetOverhangMetrics(DWRITE_OVERHANG_METRICS* overhangs) {
    return finished([&] {
        *overhangs = overhangMetrics(m_pipeline);
        return S_OK;
    });
}

HRESULT CTextLayout::GetClusterMetrics(DWRITE_CLUSTER_METRICS* metrics, UINT32 maxCount, UINT32* count) {
    return finished([&] { return clusterMetrics(m_pipeline, metrics, maxCount, *count); });
}

HRESULT CTextLayout::DetermineMinWidth(FLOAT* minWidth) {
    if (minWidth == nullptr) {
        return E_INVALIDARG;
    }
    *minWidth = 0.0F;
    return finished([&] {
        *minWidth = narrowestWidth(m_pipeline);
        return S_OK;
    });
}

HRESULT CTextLayout::HitTestPoint(FLOAT x, FLOAT y, BOOL* isTrailingHit, BOOL* isInside,
                                  DWRITE_HIT_TEST_METRICS* metrics) {
    return finished([&] {
        const PointHit hit = hitTestPoint(m_pipeline, x, y);
        *isTrailingHit = hit.isTrailing ? TRUE : FALSE;
        *isInside = hit.isInside ? TRUE : FALSE;
        *metrics = hit.metrics;
        return S_OK;
    });
}

HRESULT CTextLayout::HitTestTextPosition(UINT32 position, BOOL isTrailingHit, FLOAT* x, FLOAT* y,
                                         DWRITE_HIT_TEST_METRICS* metrics) {
    return finished([&] {
        const Caret caret = hitTestPosition(m_pipeline, position, isTrailingHit != FALSE);
        *x = caret.x;
        *y = caret.y;
        *metrics = caret.metrics;
        return S_OK;
    });
}

HRESULT CTextLayout::HitTestTextRange(UINT32 position, UINT32 length, FLOAT originX, FLOAT originY,
                                      DWRITE_HIT_TEST_METRICS* metrics, UINT32 maxCount, UINT32* count) {
    return finished([&] {
        const std::vector<DWRITE_HIT_TEST_METRICS> boxes = hitTestRange(m_pipeline, position, length, originX, originY);
        return copyOut(boxes, metrics, maxCount, *count);
    });
}

} // namespace platform
