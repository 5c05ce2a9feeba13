#include "InlineBoxObject.h"

namespace fonts {

namespace {

DWRITE_BREAK_CONDITION conditionOf(EBreak value) {
    switch (value) {
    case EBreak::Allowed:
        return DWRITE_BREAK_CONDITION_CAN_BREAK;
    case EBreak::Forbidden:
        return DWRITE_BREAK_CONDITION_MAY_NOT_BREAK;
    case EBreak::Forced:
        return DWRITE_BREAK_CONDITION_MUST_BREAK;
    case EBreak::Neutral:
        break;
    }
    return DWRITE_BREAK_CONDITION_NEUTRAL;
}

} // namespace

CInlineBoxObject::CInlineBoxObject(const SInlineBox& box, double widthFactor)
    : m_before(conditionOf(box.before)), m_after(conditionOf(box.after)) {
    m_metrics.width = static_cast<FLOAT>(box.width / widthFactor);
    m_metrics.height = static_cast<FLOAT>(box.ascent + box.descent);
    m_metrics.baseline = static_cast<FLOAT>(box.ascent);
}

HRESULT CInlineBoxObject::QueryInterface(REFIID riid, void** object) {
    if (riid == __uuidof(IUnknown) || riid == __uuidof(IDWriteInlineObject)) {
        *object = static_cast<IDWriteInlineObject*>(this);
        AddRef();
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

ULONG CInlineBoxObject::Release() {
    const ULONG count = --m_references;
    if (count == 0) {
        delete this;
    }
    return count;
}

HRESULT CInlineBoxObject::Draw(void*, IDWriteTextRenderer*, FLOAT, FLOAT, BOOL, BOOL, IUnknown*) {
    return S_OK;
}

HRESULT CInlineBoxObject::GetMetrics(DWRITE_INLINE_OBJECT_METRICS* metrics) {
    *metrics = m_metrics;
    return S_OK;
}

HRESULT CInlineBoxObject::GetOverhangMetrics(DWRITE_OVERHANG_METRICS* overhangs) {
    *overhangs = {};
    return S_OK;
}

HRESULT CInlineBoxObject::GetBreakConditions(DWRITE_BREAK_CONDITION* before, DWRITE_BREAK_CONDITION* after) {
    *before = m_before;
    *after = m_after;
    return S_OK;
}

} // namespace fonts
