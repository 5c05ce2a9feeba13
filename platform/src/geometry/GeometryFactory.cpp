#include <d2d1.h>

#include "com/ComObject.h"
#include "geometry/PathGeometry.h"
#include "geometry/RectangleGeometry.h"

namespace platform {

namespace {

/// Makes geometries. It holds nothing, so it serves all threads whatever kind was asked for.
class CGeometryFactory final : public CHeapObject<ID2D1Factory> {
public:
    HRESULT STDMETHODCALLTYPE CreateRectangleGeometry(const D2D1_RECT_F* rectangle,
                                                      ID2D1RectangleGeometry** rectangleGeometry) override {
        *rectangleGeometry = nullptr;
        return guarded([&] {
            *rectangleGeometry = new CRectangleGeometry(*this, *rectangle);
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE CreatePathGeometry(ID2D1PathGeometry** pathGeometry) override {
        *pathGeometry = nullptr;
        return guarded([&] {
            *pathGeometry = new CPathGeometry(*this);
            return S_OK;
        });
    }
};

} // namespace

} // namespace platform

HRESULT D2D1CreateFactory(D2D1_FACTORY_TYPE factoryType, REFIID riid, const D2D1_FACTORY_OPTIONS* /*pFactoryOptions*/,
                          void** ppIFactory) {
    *ppIFactory = nullptr;
    if (factoryType != D2D1_FACTORY_TYPE_SINGLE_THREADED && factoryType != D2D1_FACTORY_TYPE_MULTI_THREADED) {
        return E_INVALIDARG;
    }
    return platform::guarded([&] {
        auto* const factory = new platform::CGeometryFactory();
        const HRESULT result = factory->QueryInterface(riid, ppIFactory);
        factory->Release();
        return result;
    });
}
