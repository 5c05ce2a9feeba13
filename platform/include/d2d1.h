#pragma once

// Geometries: paths and rectangles that are built to ask for their bounds.
//
// Objects are reference counted. The factory and finished geometries may be used
// by any number of threads at once; a path under construction and its sink belong
// to one thread.

#include <dcommon.h>

// The interfaces are the platform's: no destructors, and operations of one name in derived ones.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

#define D2DERR_WRONG_STATE platformStatus(0x88990001u)
#define D2DERR_BAD_NUMBER platformStatus(0x88990011u)

enum D2D1_FACTORY_TYPE : INT32 { D2D1_FACTORY_TYPE_SINGLE_THREADED = 0, D2D1_FACTORY_TYPE_MULTI_THREADED = 1 };

enum D2D1_DEBUG_LEVEL : INT32 {
    D2D1_DEBUG_LEVEL_NONE = 0,
    D2D1_DEBUG_LEVEL_ERROR = 1,
    D2D1_DEBUG_LEVEL_WARNING = 2,
    D2D1_DEBUG_LEVEL_INFORMATION = 3
};

enum D2D1_FILL_MODE : INT32 { D2D1_FILL_MODE_ALTERNATE = 0, D2D1_FILL_MODE_WINDING = 1 };

enum D2D1_FIGURE_BEGIN : INT32 { D2D1_FIGURE_BEGIN_FILLED = 0, D2D1_FIGURE_BEGIN_HOLLOW = 1 };

enum D2D1_FIGURE_END : INT32 { D2D1_FIGURE_END_OPEN = 0, D2D1_FIGURE_END_CLOSED = 1 };

enum D2D1_PATH_SEGMENT : INT32 {
    D2D1_PATH_SEGMENT_NONE = 0,
    D2D1_PATH_SEGMENT_FORCE_UNSTROKED = 1,
    D2D1_PATH_SEGMENT_FORCE_ROUND_LINE_JOIN = 2
};

enum D2D1_SWEEP_DIRECTION : INT32 { D2D1_SWEEP_DIRECTION_COUNTER_CLOCKWISE = 0, D2D1_SWEEP_DIRECTION_CLOCKWISE = 1 };

enum D2D1_ARC_SIZE : INT32 { D2D1_ARC_SIZE_SMALL = 0, D2D1_ARC_SIZE_LARGE = 1 };

struct D2D1_FACTORY_OPTIONS {
    D2D1_DEBUG_LEVEL debugLevel;
};

/// A cubic curve from the current point: two control points and its end.
struct D2D1_BEZIER_SEGMENT {
    D2D1_POINT_2F point1;
    D2D1_POINT_2F point2;
    D2D1_POINT_2F point3;
};

/// A quadratic curve from the current point: its control point and its end.
struct D2D1_QUADRATIC_BEZIER_SEGMENT {
    D2D1_POINT_2F point1;
    D2D1_POINT_2F point2;
};

/// An elliptical arc from the current point to `point`; rotationAngle in degrees.
struct D2D1_ARC_SEGMENT {
    D2D1_POINT_2F point;
    D2D1_SIZE_F size;
    FLOAT rotationAngle;
    D2D1_SWEEP_DIRECTION sweepDirection;
    D2D1_ARC_SIZE arcSize;
};

struct ID2D1Factory;

/// Something a factory made.
struct ID2D1Resource : IUnknown {
    /// The factory, with a reference for the caller.
    virtual void STDMETHODCALLTYPE GetFactory(ID2D1Factory** factory) const = 0;
};

struct ID2D1Geometry : ID2D1Resource {
    /// The bounds of the filled shape after `worldTransform` (null: identity), exact
    /// for curves. A geometry without figures gives S_OK and left > right.
    /// D2DERR_WRONG_STATE before a path's sink is closed, D2DERR_BAD_NUMBER when the
    /// map or the result is not finite.
    virtual HRESULT STDMETHODCALLTYPE GetBounds(const D2D1_MATRIX_3X2_F* worldTransform, D2D1_RECT_F* bounds) const = 0;

    HRESULT GetBounds(const D2D1_MATRIX_3X2_F& worldTransform, D2D1_RECT_F* bounds) const {
        return GetBounds(&worldTransform, bounds);
    }
};

struct ID2D1RectangleGeometry : ID2D1Geometry {
    /// The rectangle as it was given.
    virtual void STDMETHODCALLTYPE GetRect(D2D1_RECT_F* rect) const = 0;
};

/// Receives figures made of lines and cubic curves.
///
/// The operations return nothing: what is wrong (a second figure begun inside one,
/// say) shows in the result of Close.
struct ID2D1SimplifiedGeometrySink : IUnknown {
    virtual void STDMETHODCALLTYPE SetFillMode(D2D1_FILL_MODE fillMode) = 0;
    virtual void STDMETHODCALLTYPE SetSegmentFlags(D2D1_PATH_SEGMENT vertexFlags) = 0;
    virtual void STDMETHODCALLTYPE BeginFigure(D2D1_POINT_2F startPoint, D2D1_FIGURE_BEGIN figureBegin) = 0;
    virtual void STDMETHODCALLTYPE AddLines(const D2D1_POINT_2F* points, UINT pointsCount) = 0;
    virtual void STDMETHODCALLTYPE AddBeziers(const D2D1_BEZIER_SEGMENT* beziers, UINT beziersCount) = 0;
    virtual void STDMETHODCALLTYPE EndFigure(D2D1_FIGURE_END figureEnd) = 0;
    /// Ends the path. D2DERR_WRONG_STATE when it was closed before or misused,
    /// D2DERR_BAD_NUMBER when a coordinate was not finite.
    virtual HRESULT STDMETHODCALLTYPE Close() = 0;
};

struct ID2D1GeometrySink : ID2D1SimplifiedGeometrySink {
    virtual void STDMETHODCALLTYPE AddLine(D2D1_POINT_2F point) = 0;
    virtual void STDMETHODCALLTYPE AddBezier(const D2D1_BEZIER_SEGMENT* bezier) = 0;
    virtual void STDMETHODCALLTYPE AddQuadraticBezier(const D2D1_QUADRATIC_BEZIER_SEGMENT* bezier) = 0;
    virtual void STDMETHODCALLTYPE AddQuadraticBeziers(const D2D1_QUADRATIC_BEZIER_SEGMENT* beziers,
                                                       UINT beziersCount) = 0;
    virtual void STDMETHODCALLTYPE AddArc(const D2D1_ARC_SEGMENT* arc) = 0;

    void AddBezier(const D2D1_BEZIER_SEGMENT& bezier) { AddBezier(&bezier); }
    void AddQuadraticBezier(const D2D1_QUADRATIC_BEZIER_SEGMENT& bezier) { AddQuadraticBezier(&bezier); }
    void AddArc(const D2D1_ARC_SEGMENT& arc) { AddArc(&arc); }
};

struct ID2D1PathGeometry : ID2D1Geometry {
    /// The sink that fills the path; once only, D2DERR_WRONG_STATE after that.
    virtual HRESULT STDMETHODCALLTYPE Open(ID2D1GeometrySink** geometrySink) = 0;
    /// Plays the finished path into another sink, which the caller closes.
    virtual HRESULT STDMETHODCALLTYPE Stream(ID2D1GeometrySink* geometrySink) const = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSegmentCount(UINT32* count) const = 0;
    virtual HRESULT STDMETHODCALLTYPE GetFigureCount(UINT32* count) const = 0;
};

struct ID2D1Factory : IUnknown {
    /// Any rectangle, also an empty or inverted one.
    virtual HRESULT STDMETHODCALLTYPE CreateRectangleGeometry(const D2D1_RECT_F* rectangle,
                                                              ID2D1RectangleGeometry** rectangleGeometry) = 0;
    /// A path without figures, to be opened.
    virtual HRESULT STDMETHODCALLTYPE CreatePathGeometry(ID2D1PathGeometry** pathGeometry) = 0;

    HRESULT CreateRectangleGeometry(const D2D1_RECT_F& rectangle, ID2D1RectangleGeometry** rectangleGeometry) {
        return CreateRectangleGeometry(&rectangle, rectangleGeometry);
    }
};

PLATFORM_UUID(ID2D1Resource, "2cd90691-12e2-11dc-9fed-001143a055f9");
PLATFORM_UUID(ID2D1Geometry, "2cd906a1-12e2-11dc-9fed-001143a055f9");
PLATFORM_UUID(ID2D1RectangleGeometry, "2cd906a2-12e2-11dc-9fed-001143a055f9");
PLATFORM_UUID(ID2D1SimplifiedGeometrySink, "2cd9069e-12e2-11dc-9fed-001143a055f9");
PLATFORM_UUID(ID2D1GeometrySink, "2cd9069f-12e2-11dc-9fed-001143a055f9");
PLATFORM_UUID(ID2D1PathGeometry, "2cd906a5-12e2-11dc-9fed-001143a055f9");
PLATFORM_UUID(ID2D1Factory, "06152247-6f50-465a-9245-118bfd3b6007");

extern "C" {

/// A factory of geometries. `pFactoryOptions` may be null. E_INVALIDARG for an
/// unknown type, E_NOINTERFACE and null for an interface it does not have.
PLATFORM_EXPORT HRESULT WINAPI D2D1CreateFactory(D2D1_FACTORY_TYPE factoryType, REFIID riid,
                                                 const D2D1_FACTORY_OPTIONS* pFactoryOptions, void** ppIFactory);
}

inline HRESULT D2D1CreateFactory(D2D1_FACTORY_TYPE factoryType, REFIID riid, void** factory) {
    return D2D1CreateFactory(factoryType, riid, nullptr, factory);
}

template <typename Factory>
HRESULT D2D1CreateFactory(D2D1_FACTORY_TYPE factoryType, Factory** factory) {
    return D2D1CreateFactory(factoryType, __uuidof(Factory), reinterpret_cast<void**>(factory));
}

#pragma GCC diagnostic pop
