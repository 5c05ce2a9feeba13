#pragma once

#include <d2d1.h>

#include "com/ComObject.h"

namespace platform {

/// A rectangle, kept as it was given. Immutable.
class CRectangleGeometry final : public CHeapObject<ID2D1RectangleGeometry, ID2D1Geometry, ID2D1Resource> {
public:
    /// Takes a reference of `factory`. Born with one reference.
    CRectangleGeometry(ID2D1Factory& factory, const D2D1_RECT_F& rectangle);

    void STDMETHODCALLTYPE GetFactory(ID2D1Factory** factory) const override;
    HRESULT STDMETHODCALLTYPE GetBounds(const D2D1_MATRIX_3X2_F* worldTransform, D2D1_RECT_F* bounds) const override;
    void STDMETHODCALLTYPE GetRect(D2D1_RECT_F* rect) const override;

private:
    ~CRectangleGeometry() override;

    ID2D1Factory& m_factory;
    D2D1_RECT_F m_rectangle;
};

} // namespace platform
