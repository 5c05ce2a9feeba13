#include "answers/Renderer.h"

namespace platform {

namespace {

constexpr auto upright = DWRITE_GLYPH_ORIENTATION_ANGLE_0_DEGREES;

} // namespace

Renderer::Renderer(IDWriteTextRenderer& renderer, void* context) : m_renderer(renderer), m_context(context) {
    void* turning = nullptr;
    // Renderers say no in many ways, not only with E_NOINTERFACE.
    if (SUCCEEDED(renderer.QueryInterface(__uuidof(IDWriteTextRenderer1), &turning))) {
        m_turning = Reference<IDWriteTextRenderer1>(static_cast<IDWriteTextRenderer1*>(turning), false);
    }
}

HRESULT Renderer::drawGlyphRun(FLOAT x, FLOAT y, const DWRITE_GLYPH_RUN& run,
                               const DWRITE_GLYPH_RUN_DESCRIPTION& description, IUnknown* effect) const {
    constexpr auto mode = DWRITE_MEASURING_MODE_NATURAL;
    return m_turning ? m_turning->DrawGlyphRun(m_context, x, y, upright, mode, &run, &description, effect)
                     : m_renderer.DrawGlyphRun(m_context, x, y, mode, &run, &description, effect);
}

HRESULT Renderer::drawUnderline(FLOAT x, FLOAT y, const DWRITE_UNDERLINE& bar, IUnknown* effect) const {
    return m_turning ? m_turning->DrawUnderline(m_context, x, y, upright, &bar, effect)
                     : m_renderer.DrawUnderline(m_context, x, y, &bar, effect);
}

HRESULT Renderer::drawStrikethrough(FLOAT x, FLOAT y, const DWRITE_STRIKETHROUGH& bar, IUnknown* effect) const {
    return m_turning ? m_turning->DrawStrikethrough(m_context, x, y, upright, &bar, effect)
                     : m_renderer.DrawStrikethrough(m_context, x, y, &bar, effect);
}

HRESULT Renderer::drawInlineObject(FLOAT x, FLOAT y, IDWriteInlineObject* object, bool isRightToLeft,
                                   IUnknown* effect) const {
    const BOOL rightToLeft = isRightToLeft ? TRUE : FALSE;
    return m_turning ? m_turning->DrawInlineObject(m_context, x, y, upright, object, FALSE, rightToLeft, effect)
                     : m_renderer.DrawInlineObject(m_context, x, y, object, FALSE, rightToLeft, effect);
}

} // namespace platform
