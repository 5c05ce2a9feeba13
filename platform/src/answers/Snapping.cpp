#include "answers/Snapping.h"

#include <cmath>

namespace platform {

namespace {

float roundHalfUp(float value) noexcept {
    return std::floor(value + 0.5F);
}

} // namespace

HRESULT Snapping::ask(IDWritePixelSnapping& renderer, void* context, Snapping& snapping) {
    BOOL isDisabled = FALSE;
    if (const HRESULT result = renderer.IsPixelSnappingDisabled(context, &isDisabled); FAILED(result)) {
        return result;
    }
    if (isDisabled != FALSE) {
        snapping = Snapping();
        return S_OK;
    }
    DWRITE_MATRIX transform{};
    if (const HRESULT result = renderer.GetCurrentTransform(context, &transform); FAILED(result)) {
        return result;
    }
    FLOAT pixelsPerDip = 1.0F;
    if (const HRESULT result = renderer.GetPixelsPerDip(context, &pixelsPerDip); FAILED(result)) {
        return result;
    }
    snapping = Snapping(transform, pixelsPerDip);
    return S_OK;
}

Snapping::Snapping(const DWRITE_MATRIX& transform, FLOAT pixelsPerDip) noexcept
    : m_transform(transform), m_pixelsPerDip(pixelsPerDip),
      m_determinant(transform.m11 * transform.m22 - transform.m12 * transform.m21) {
    const bool isDiagonal = transform.m12 == 0.0F && transform.m21 == 0.0F;
    const bool isAntiDiagonal = transform.m11 == 0.0F && transform.m22 == 0.0F;
    m_isEnabled = pixelsPerDip > 0.0F && (isDiagonal || isAntiDiagonal);
}

FLOAT Snapping::snap(FLOAT y) const noexcept {
    if (!m_isEnabled) {
        return y;
    }
    const FLOAT pixels = y * m_pixelsPerDip;
    if (m_determinant == 0.0F) {
        return roundHalfUp(pixels) / m_pixelsPerDip;
    }
    const DWRITE_MATRIX& m = m_transform;
    const FLOAT deviceX = roundHalfUp(pixels * m.m21 + m.dx);
    const FLOAT deviceY = roundHalfUp(pixels * m.m22 + m.dy);
    const FLOAT back = (m.m11 * (deviceY - m.dy) - m.m12 * (deviceX - m.dx)) / m_determinant;
    return back / m_pixelsPerDip;
}

} // namespace platform
