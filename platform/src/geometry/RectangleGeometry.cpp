#include "geometry/RectangleGeometry.h"

#include <algorithm>

namespace platform {

namespace {

D2D1_POINT_2F mapped(const D2D1_MATRIX_3X2_F& m, float x, float y) {
    return {x * m.m11 + y * m.m21 + m.dx, x * m.m12 + y * m.m22 + m.dy};
}

} // namespace

CRectangleGeometry::CRectangleGeometry(ID2D1Factory& factory, const D2D1_RECT_F& rectangle)
    : m_factory(factory), m_rectangle(rectangle) {
    m_factory.AddRef();
}

CRectangleGeometry::~CRectangleGeometry() {
    m_factory.Release();
}

void CRectangleGeometry::GetFactory(ID2D1Factory** factory) const {
    handOut(m_factory, factory);
}

HRESULT CRectangleGeometry::GetBounds(const D2D1_MATRIX_3X2_F* worldTransform, D2D1_RECT_F* bounds) const {
    if (worldTransform == nullptr) {
        *bounds = m_rectangle;
        return S_OK;
    }
    const D2D1_POINT_2F a = mapped(*worldTransform, m_rectangle.left, m_rectangle.top);
    const D2D1_POINT_2F b = mapped(*worldTransform, m_rectangle.right, m_rectangle.top);
    const D2D1_POINT_2F c = mapped(*worldTransform, m_rectangle.right, m_rectangle.bottom);
    const D2D1_POINT_2F d = mapped(*worldTransform, m_rectangle.left, m_rectangle.bottom);
    const auto [left, right] = std::minmax({a.x, b.x, c.x, d.x});
    const auto [top, bottom] = std::minmax({a.y, b.y, c.y, d.y});
    *bounds = {left, top, right, bottom};
    return S_OK;
}

void CRectangleGeometry::GetRect(D2D1_RECT_F* rect) const {
    *rect = m_rectangle;
}

} // namespace platform
