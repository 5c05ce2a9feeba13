#pragma once

#include <dwrite_2.h>

#include "com/Reference.h"

namespace platform {

/// A caller's renderer with the caller's context, for one drawing. One that knows turned glyphs is told that ours stand
/// upright.
class Renderer {
public:
    Renderer(IDWriteTextRenderer& renderer, void* context);

    /// Asks how the renderer puts text on pixels.
    [[nodiscard]] IDWritePixelSnapping& pixels() const noexcept { return m_renderer; }
    [[nodiscard]] void* context() const noexcept { return m_context; }

    HRESULT drawGlyphRun(FLOAT x, FLOAT y, const DWRITE_GLYPH_RUN& run, const DWRITE_GLYPH_RUN_DESCRIPTION& description,
                         IUnknown* effect) const;
    HRESULT drawUnderline(FLOAT x, FLOAT y, const DWRITE_UNDERLINE& bar, IUnknown* effect) const;
    HRESULT drawStrikethrough(FLOAT x, FLOAT y, const DWRITE_STRIKETHROUGH& bar, IUnknown* effect) const;
    HRESULT drawInlineObject(FLOAT x, FLOAT y, IDWriteInlineObject* object, bool isRightToLeft, IUnknown* effect) const;

private:
    IDWriteTextRenderer& m_renderer;
    void* m_context;
    /// Null if the renderer is of the first generation.
    Reference<IDWriteTextRenderer1> m_turning;
};

} // namespace platform
