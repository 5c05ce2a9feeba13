#include "FakeObjects.h"

namespace fake {

namespace {

std::string listed(const D2D1_RECT_F& rect) {
    std::ostringstream text;
    text << '[' << rect.left << ' ' << rect.top << ' ' << rect.right << ' ' << rect.bottom << ']';
    return text.str();
}

std::string listed(const D2D1_MATRIX_3X2_F* matrix) {
    if (!matrix)
        return "null";
    std::ostringstream text;
    text << '[' << matrix->m11 << ' ' << matrix->m12 << ' ' << matrix->m21 << ' ' << matrix->m22 << ' ' << matrix->dx
         << ' ' << matrix->dy << ']';
    return text.str();
}

// The bounds under a translation; other transforms are not asked for.
void moveBounds(D2D1_RECT_F bounds, const D2D1_MATRIX_3X2_F* matrix, D2D1_RECT_F* moved) {
    const FLOAT dx = matrix ? matrix->dx : 0;
    const FLOAT dy = matrix ? matrix->dy : 0;
    *moved = {bounds.left + dx, bounds.top + dy, bounds.right + dx, bounds.bottom + dy};
}

class Sink final : public Object<ID2D1GeometrySink, ID2D1SimplifiedGeometrySink> {
public:
    using Object::Object;

    void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE) override { unexpected("SetFillMode"); }
    void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT) override { unexpected("SetSegmentFlags"); }
    void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F, D2D1_FIGURE_BEGIN) override { unexpected("BeginFigure"); }
    void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F*, UINT) override { unexpected("AddLines"); }
    void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT*, UINT) override { unexpected("AddBeziers"); }
    void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END) override { unexpected("EndFigure"); }
    HRESULT STDMETHODCALLTYPE Close() override { return record("Sink.Close"); }
    void STDMETHODCALLTYPE AddLine(D2D1_POINT_2F) override { unexpected("AddLine"); }
    void STDMETHODCALLTYPE AddBezier(const D2D1_BEZIER_SEGMENT*) override { unexpected("AddBezier"); }
    void STDMETHODCALLTYPE AddQuadraticBezier(const D2D1_QUADRATIC_BEZIER_SEGMENT*) override {
        unexpected("AddQuadraticBezier");
    }
    void STDMETHODCALLTYPE AddQuadraticBeziers(const D2D1_QUADRATIC_BEZIER_SEGMENT*, UINT) override {
        unexpected("AddQuadraticBeziers");
    }
    void STDMETHODCALLTYPE AddArc(const D2D1_ARC_SEGMENT*) override { unexpected("AddArc"); }
};

class Path final : public Object<ID2D1PathGeometry, ID2D1Geometry, ID2D1Resource> {
public:
    using Object::Object;

    void STDMETHODCALLTYPE GetFactory(ID2D1Factory**) const override { unexpected("GetFactory"); }
    HRESULT STDMETHODCALLTYPE GetBounds(const D2D1_MATRIX_3X2_F* transform, D2D1_RECT_F* bounds) const override {
        const HRESULT result = record("Path.GetBounds", listed(transform));
        if (SUCCEEDED(result))
            moveBounds(platform().pathBounds, transform, bounds);
        return result;
    }
    HRESULT STDMETHODCALLTYPE Open(ID2D1GeometrySink** sink) override {
        const HRESULT result = record("Path.Open");
        return handOut(result, FAILED(result) ? nullptr : new Sink(objects().otherReferences, Lifetime::References),
                       sink);
    }
    HRESULT STDMETHODCALLTYPE Stream(ID2D1GeometrySink*) const override { return unexpected("Stream"); }
    HRESULT STDMETHODCALLTYPE GetSegmentCount(UINT32*) const override { return unexpected("GetSegmentCount"); }
    HRESULT STDMETHODCALLTYPE GetFigureCount(UINT32*) const override { return unexpected("GetFigureCount"); }
};

class Rectangle final : public Object<ID2D1RectangleGeometry, ID2D1Geometry, ID2D1Resource> {
public:
    explicit Rectangle(const D2D1_RECT_F& rect)
        : Object(objects().otherReferences, Lifetime::References), m_rect(rect) {}

    void STDMETHODCALLTYPE GetFactory(ID2D1Factory**) const override { unexpected("GetFactory"); }
    HRESULT STDMETHODCALLTYPE GetBounds(const D2D1_MATRIX_3X2_F* transform, D2D1_RECT_F* bounds) const override {
        const HRESULT result = record("Rectangle.GetBounds", listed(transform));
        if (SUCCEEDED(result))
            moveBounds(m_rect, transform, bounds);
        return result;
    }
    void STDMETHODCALLTYPE GetRect(D2D1_RECT_F*) const override { unexpected("GetRect"); }

private:
    D2D1_RECT_F m_rect;
};

class GeometryFactory final : public Object<ID2D1Factory> {
public:
    using Object::Object;

    HRESULT STDMETHODCALLTYPE CreateRectangleGeometry(const D2D1_RECT_F* rectangle,
                                                      ID2D1RectangleGeometry** geometry) override {
        const HRESULT result = record("D2DFactory.CreateRectangleGeometry", listed(*rectangle));
        return handOut(result, FAILED(result) ? nullptr : new Rectangle(*rectangle), geometry);
    }
    HRESULT STDMETHODCALLTYPE CreatePathGeometry(ID2D1PathGeometry** geometry) override {
        const HRESULT result = record("D2DFactory.CreatePathGeometry");
        return handOut(result, FAILED(result) ? nullptr : new Path(objects().otherReferences, Lifetime::References),
                       geometry);
    }
};

} // namespace

} // namespace fake

extern "C" HRESULT WINAPI D2D1CreateFactory(D2D1_FACTORY_TYPE factoryType, REFIID riid,
                                            const D2D1_FACTORY_OPTIONS* options, void** factory) {
    *factory = nullptr;
    const char* interfaceName = riid == __uuidof(ID2D1Factory) ? "ID2D1Factory" : "another interface";
    std::ostringstream debugLevel;
    if (options)
        debugLevel << options->debugLevel;
    const HRESULT result =
        fake::record("D2D1CreateFactory", factoryType, interfaceName, options ? debugLevel.str() : "null");
    if (FAILED(result))
        return result;
    ID2D1Factory* created = new fake::GeometryFactory(fake::objects().otherReferences, fake::Lifetime::References);
    created->AddRef();
    *factory = created;
    return result;
}
