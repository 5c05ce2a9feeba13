#pragma once

#include <dwrite.h>

namespace platform {

/// Puts baselines on the pixels of a renderer. Only the vertical coordinate is ever moved.
class Snapping {
public:
    /// Asks `renderer` how it snaps; a failing answer is handed on.
    static HRESULT ask(IDWritePixelSnapping& renderer, void* context, Snapping& snapping);

    Snapping() = default;
    Snapping(const DWRITE_MATRIX& transform, FLOAT pixelsPerDip) noexcept;

    /// The nearest place to `y` that falls on a whole pixel.
    [[nodiscard]] FLOAT snap(FLOAT y) const noexcept;

private:
    bool m_isEnabled = false;
    DWRITE_MATRIX m_transform{};
    FLOAT m_pixelsPerDip = 1.0F;
    FLOAT m_determinant = 0.0F;
};

} // namespace platform
