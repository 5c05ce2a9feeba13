#include <d2d1.h>

#include <cmath>
#include <limits>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <oslayer/com_ptr.h>

namespace {

using oslayer::com_ptr;

constexpr D2D1_MATRIX_3X2_F moveBy(float dx, float dy) {
    return {1.0F, 0.0F, 0.0F, 1.0F, dx, dy};
}

com_ptr<ID2D1Factory> makeFactory() {
    com_ptr<ID2D1Factory> factory;
    EXPECT_EQ(D2D1CreateFactory(D2D1_FACTORY_TYPE_MULTI_THREADED, &factory), S_OK);
    return factory;
}

struct OpenPath {
    com_ptr<ID2D1PathGeometry> geometry;
    com_ptr<ID2D1GeometrySink> sink;
};

OpenPath openPath() {
    OpenPath path;
    EXPECT_EQ(makeFactory()->CreatePathGeometry(&path.geometry), S_OK);
    EXPECT_EQ(path.geometry->Open(&path.sink), S_OK);
    return path;
}

void expectRect(const D2D1_RECT_F& rect, float left, float top, float right, float bottom) {
    EXPECT_FLOAT_EQ(rect.left, left);
    EXPECT_FLOAT_EQ(rect.top, top);
    EXPECT_FLOAT_EQ(rect.right, right);
    EXPECT_FLOAT_EQ(rect.bottom, bottom);
}

D2D1_RECT_F boundsOf(ID2D1Geometry& geometry, const D2D1_MATRIX_3X2_F* transform = nullptr) {
    D2D1_RECT_F bounds{};
    EXPECT_EQ(geometry.GetBounds(transform, &bounds), S_OK);
    return bounds;
}

TEST(D2D1CreateFactory, makesAFactoryOfEitherKind) {
    for (const D2D1_FACTORY_TYPE type : {D2D1_FACTORY_TYPE_SINGLE_THREADED, D2D1_FACTORY_TYPE_MULTI_THREADED}) {
        const D2D1_FACTORY_OPTIONS options{D2D1_DEBUG_LEVEL_NONE};
        for (const IID& iid : {__uuidof(ID2D1Factory), __uuidof(IUnknown)}) {
            void* factory = nullptr;
            EXPECT_EQ(D2D1CreateFactory(type, iid, &options, &factory), S_OK);
            ASSERT_NE(factory, nullptr);
            EXPECT_EQ(static_cast<IUnknown*>(factory)->Release(), 0U);
        }
    }
}

TEST(D2D1CreateFactory, refusesAnUnknownInterfaceAndAnUnknownType) {
    int placeholder = 0;
    void* factory = &placeholder;
    EXPECT_EQ(D2D1CreateFactory(D2D1_FACTORY_TYPE_SINGLE_THREADED, __uuidof(ID2D1Geometry), nullptr, &factory),
              E_NOINTERFACE);
    EXPECT_EQ(factory, nullptr);
    factory = &placeholder;
    EXPECT_EQ(D2D1CreateFactory(static_cast<D2D1_FACTORY_TYPE>(2), __uuidof(ID2D1Factory), nullptr, &factory),
              E_INVALIDARG);
    EXPECT_EQ(factory, nullptr);
}

TEST(PathGeometry, opensOnce) {
    OpenPath path = openPath();
    com_ptr<ID2D1GeometrySink> second;
    EXPECT_EQ(path.geometry->Open(&second), D2DERR_WRONG_STATE);
    EXPECT_EQ(second.get(), nullptr);
    EXPECT_EQ(path.sink->Close(), S_OK);
    EXPECT_EQ(path.geometry->Open(&second), D2DERR_WRONG_STATE);
}

TEST(PathGeometry, closesOnce) {
    OpenPath path = openPath();
    EXPECT_EQ(path.sink->Close(), S_OK);
    EXPECT_EQ(path.sink->Close(), D2DERR_WRONG_STATE);
}

TEST(PathGeometry, answersNothingBeforeClose) {
    OpenPath path = openPath();
    OpenPath other = openPath();
    D2D1_RECT_F bounds{};
    UINT32 count = 0;
    EXPECT_EQ(path.geometry->GetBounds(nullptr, &bounds), D2DERR_WRONG_STATE);
    EXPECT_EQ(path.geometry->GetFigureCount(&count), D2DERR_WRONG_STATE);
    EXPECT_EQ(path.geometry->GetSegmentCount(&count), D2DERR_WRONG_STATE);
    EXPECT_EQ(path.geometry->Stream(other.sink), D2DERR_WRONG_STATE);
}

TEST(PathGeometry, withoutFiguresHasInvertedBounds) {
    OpenPath path = openPath();
    EXPECT_EQ(path.sink->Close(), S_OK);
    const D2D1_RECT_F bounds = boundsOf(*path.geometry);
    EXPECT_GT(bounds.left, bounds.right);
    const D2D1_MATRIX_3X2_F transform = moveBy(5.0F, 6.0F);
    const D2D1_RECT_F moved = boundsOf(*path.geometry, &transform);
    EXPECT_GT(moved.left, moved.right);
}

TEST(PathGeometry, reportsMisuseAtClose) {
    using Misuse = void (*)(ID2D1GeometrySink&);
    const Misuse misuses[] = {
        [](ID2D1GeometrySink& sink) {
            sink.AddLine({1, 1});
        },
        [](ID2D1GeometrySink& sink) {
            sink.AddBezier({{1, 1}, {2, 2}, {3, 3}});
        },
        [](ID2D1GeometrySink& sink) {
            sink.AddQuadraticBezier({{1, 1}, {2, 2}});
        },
        [](ID2D1GeometrySink& sink) {
            sink.AddArc({{1, 1}, {2, 2}, 0, D2D1_SWEEP_DIRECTION_CLOCKWISE, D2D1_ARC_SIZE_SMALL});
        },
        [](ID2D1GeometrySink& sink) { sink.EndFigure(D2D1_FIGURE_END_CLOSED); },
        [](ID2D1GeometrySink& sink) {
            sink.BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
        },
        [](ID2D1GeometrySink& sink) {
            sink.BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
            sink.BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
            sink.EndFigure(D2D1_FIGURE_END_CLOSED);
        },
        [](ID2D1GeometrySink& sink) {
            sink.BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
            sink.EndFigure(D2D1_FIGURE_END_CLOSED);
            sink.SetFillMode(D2D1_FILL_MODE_WINDING);
        },
    };
    for (std::size_t i = 0; i < std::size(misuses); ++i) {
        OpenPath path = openPath();
        misuses[i](*path.sink);
        EXPECT_EQ(path.sink->Close(), D2DERR_WRONG_STATE) << "misuse " << i;
        EXPECT_EQ(path.sink->Close(), D2DERR_WRONG_STATE) << "misuse " << i;
        D2D1_RECT_F bounds{};
        EXPECT_EQ(path.geometry->GetBounds(nullptr, &bounds), D2DERR_WRONG_STATE) << "misuse " << i;
    }
}

TEST(PathGeometry, reportsCoordinatesThatAreNotFiniteAtClose) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    for (const D2D1_POINT_2F bad : {D2D1_POINT_2F{nan, 0.0F}, D2D1_POINT_2F{0.0F, infinite}}) {
        for (int segment = 0; segment < 5; ++segment) {
            OpenPath path = openPath();
            path.sink->BeginFigure(segment == 0 ? bad : D2D1_POINT_2F{0.0F, 0.0F}, D2D1_FIGURE_BEGIN_FILLED);
            switch (segment) {
            case 1:
                path.sink->AddLine(bad);
                break;
            case 2:
                path.sink->AddBezier({{1, 1}, bad, {3, 3}});
                break;
            case 3:
                path.sink->AddQuadraticBezier({bad, {3, 3}});
                break;
            case 4:
                path.sink->AddArc({bad, {2, 2}, 0, D2D1_SWEEP_DIRECTION_CLOCKWISE, D2D1_ARC_SIZE_SMALL});
                break;
            default:
                break;
            }
            path.sink->EndFigure(D2D1_FIGURE_END_CLOSED);
            EXPECT_EQ(path.sink->Close(), D2DERR_BAD_NUMBER) << "segment " << segment;
        }
    }
}

TEST(PathGeometry, refusesMapsAndResultsThatAreNotFinite) {
    OpenPath path = openPath();
    path.sink->BeginFigure({1, 2}, D2D1_FIGURE_BEGIN_FILLED);
    path.sink->AddLine({3e38F, 2});
    path.sink->EndFigure(D2D1_FIGURE_END_CLOSED);
    ASSERT_EQ(path.sink->Close(), S_OK);
    D2D1_RECT_F bounds{};
    D2D1_MATRIX_3X2_F transform = moveBy(std::numeric_limits<float>::quiet_NaN(), 0.0F);
    EXPECT_EQ(path.geometry->GetBounds(&transform, &bounds), D2DERR_BAD_NUMBER);
    transform = {2.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F};
    EXPECT_EQ(path.geometry->GetBounds(&transform, &bounds), D2DERR_BAD_NUMBER);
}

TEST(PathGeometry, hasTheBoundsOfItsLines) {
    OpenPath path = openPath();
    const D2D1_POINT_2F points[] = {{10, 5}, {-4, 8}, {2, -3}};
    path.sink->SetFillMode(D2D1_FILL_MODE_WINDING);
    path.sink->BeginFigure({1, 1}, D2D1_FIGURE_BEGIN_FILLED);
    path.sink->AddLines(points, 3);
    path.sink->EndFigure(D2D1_FIGURE_END_CLOSED);
    ASSERT_EQ(path.sink->Close(), S_OK);
    expectRect(boundsOf(*path.geometry), -4, -3, 10, 8);
    const D2D1_MATRIX_3X2_F quarterTurn = {0, 1, -1, 0, 100, 0};
    expectRect(boundsOf(*path.geometry, &quarterTurn), 92, -4, 103, 10);
}

TEST(PathGeometry, hasTheBoundsOfItsCurvesAndNotOfTheirControlPoints) {
    OpenPath path = openPath();
    path.sink->BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
    path.sink->AddBezier({{25, 100}, {75, 100}, {100, 0}});
    path.sink->EndFigure(D2D1_FIGURE_END_CLOSED);
    path.sink->BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
    path.sink->AddQuadraticBezier({{50, -100}, {100, 0}});
    path.sink->EndFigure(D2D1_FIGURE_END_OPEN);
    ASSERT_EQ(path.sink->Close(), S_OK);
    expectRect(boundsOf(*path.geometry), 0, -50, 100, 75);
    const D2D1_MATRIX_3X2_F move = moveBy(7.25F, -3.5F);
    expectRect(boundsOf(*path.geometry, &move), 7.25F, -53.5F, 107.25F, 71.5F);
    // y down and sheared: the extrema of the mapped curve are not the mapped extrema.
    const D2D1_MATRIX_3X2_F shear = {1, 0, 1, -1, 0, 0};
    D2D1_RECT_F sheared{};
    ASSERT_EQ(path.geometry->GetBounds(shear, &sheared), S_OK);
    // x + y of the cubic: control values 0, 125, 175, 100 (fontTools.misc.bezierTools.calcCubicBounds);
    // of the quadratic: control values 0, -50, 100.
    expectRect(sheared, -12.5F, -75.0F, 135.2384991F, 50.0F);
}

TEST(PathGeometry, hasTheBoundsOfItsArcs) {
    // From (0, 0) to (10, 0) on a circle of radius 5: clockwise on a page whose y axis points down goes over the top.
    for (const bool clockwise : {true, false}) {
        OpenPath path = openPath();
        path.sink->BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
        path.sink->AddArc({{10, 0},
                           {5, 5},
                           0,
                           clockwise ? D2D1_SWEEP_DIRECTION_CLOCKWISE : D2D1_SWEEP_DIRECTION_COUNTER_CLOCKWISE,
                           D2D1_ARC_SIZE_SMALL});
        path.sink->EndFigure(D2D1_FIGURE_END_CLOSED);
        ASSERT_EQ(path.sink->Close(), S_OK);
        const D2D1_RECT_F bounds = boundsOf(*path.geometry);
        EXPECT_NEAR(bounds.left, 0.0F, 1e-5F);
        EXPECT_NEAR(bounds.right, 10.0F, 1e-5F);
        EXPECT_NEAR(bounds.top, clockwise ? -5.0F : 0.0F, 1e-5F);
        EXPECT_NEAR(bounds.bottom, clockwise ? 0.0F : 5.0F, 1e-5F);
    }
}

TEST(PathGeometry, takesTheLongWayRoundOnALargeArc) {
    // A quarter circle of radius 10 around (0, 0) or, the long way, three quarters of one around (10, 10).
    const auto boundsWith = [](D2D1_ARC_SIZE size, D2D1_SWEEP_DIRECTION direction) {
        OpenPath path = openPath();
        path.sink->BeginFigure({10, 0}, D2D1_FIGURE_BEGIN_FILLED);
        path.sink->AddArc({{0, 10}, {10, 10}, 0, direction, size});
        path.sink->EndFigure(D2D1_FIGURE_END_CLOSED);
        EXPECT_EQ(path.sink->Close(), S_OK);
        return boundsOf(*path.geometry);
    };
    const auto expectNear = [](const D2D1_RECT_F& r, float left, float top, float right, float bottom) {
        EXPECT_NEAR(r.left, left, 1e-5F);
        EXPECT_NEAR(r.top, top, 1e-5F);
        EXPECT_NEAR(r.right, right, 1e-5F);
        EXPECT_NEAR(r.bottom, bottom, 1e-5F);
    };
    expectNear(boundsWith(D2D1_ARC_SIZE_SMALL, D2D1_SWEEP_DIRECTION_CLOCKWISE), 0, 0, 10, 10);
    expectNear(boundsWith(D2D1_ARC_SIZE_LARGE, D2D1_SWEEP_DIRECTION_CLOCKWISE), 0, 0, 20, 20);
    expectNear(boundsWith(D2D1_ARC_SIZE_SMALL, D2D1_SWEEP_DIRECTION_COUNTER_CLOCKWISE), 0, 0, 10, 10);
    expectNear(boundsWith(D2D1_ARC_SIZE_LARGE, D2D1_SWEEP_DIRECTION_COUNTER_CLOCKWISE), -10, -10, 10, 10);
}

TEST(PathGeometry, widensRadiiThatDoNotReachAndTreatsZeroRadiiAsALine) {
    const auto boundsWith = [](float radius) {
        OpenPath path = openPath();
        path.sink->BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
        path.sink->AddArc({{10, 0}, {radius, radius}, 0, D2D1_SWEEP_DIRECTION_CLOCKWISE, D2D1_ARC_SIZE_SMALL});
        path.sink->EndFigure(D2D1_FIGURE_END_CLOSED);
        EXPECT_EQ(path.sink->Close(), S_OK);
        return boundsOf(*path.geometry);
    };
    EXPECT_NEAR(boundsWith(1.0F).top, -5.0F, 1e-5F);
    expectRect(boundsWith(0.0F), 0, 0, 10, 0);
}

TEST(PathGeometry, leavesHollowFiguresOutOfTheBounds) {
    OpenPath path = openPath();
    path.sink->BeginFigure({-100, -100}, D2D1_FIGURE_BEGIN_HOLLOW);
    path.sink->AddLine({100, 100});
    path.sink->EndFigure(D2D1_FIGURE_END_OPEN);
    path.sink->BeginFigure({1, 2}, D2D1_FIGURE_BEGIN_FILLED);
    path.sink->AddLine({3, 4});
    path.sink->EndFigure(D2D1_FIGURE_END_CLOSED);
    ASSERT_EQ(path.sink->Close(), S_OK);
    expectRect(boundsOf(*path.geometry), 1, 2, 3, 4);
}

TEST(PathGeometry, streamsWhatItWasGiven) {
    OpenPath path = openPath();
    const D2D1_BEZIER_SEGMENT cubic = {{25, 100}, {75, 100}, {100, 0}};
    const D2D1_QUADRATIC_BEZIER_SEGMENT quadratic = {{50, -100}, {0, 0}};
    path.sink->SetFillMode(D2D1_FILL_MODE_WINDING);
    path.sink->SetSegmentFlags(D2D1_PATH_SEGMENT_FORCE_UNSTROKED);
    path.sink->BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
    path.sink->AddBeziers(&cubic, 1);
    path.sink->AddQuadraticBeziers(&quadratic, 1);
    path.sink->AddArc({{-20, 0}, {10, 10}, 0, D2D1_SWEEP_DIRECTION_CLOCKWISE, D2D1_ARC_SIZE_SMALL});
    path.sink->EndFigure(D2D1_FIGURE_END_CLOSED);
    path.sink->BeginFigure({500, 500}, D2D1_FIGURE_BEGIN_HOLLOW);
    path.sink->AddLine({501, 501});
    path.sink->EndFigure(D2D1_FIGURE_END_OPEN);
    ASSERT_EQ(path.sink->Close(), S_OK);

    OpenPath copy = openPath();
    ASSERT_EQ(path.geometry->Stream(copy.sink), S_OK);
    ASSERT_EQ(copy.sink->Close(), S_OK);
    const D2D1_RECT_F bounds = boundsOf(*path.geometry);
    const D2D1_RECT_F copied = boundsOf(*copy.geometry);
    expectRect(copied, bounds.left, bounds.top, bounds.right, bounds.bottom);
    expectRect(bounds, -20, -50, 100, 75);
    for (ID2D1PathGeometry* const geometry : {path.geometry.get(), copy.geometry.get()}) {
        UINT32 figures = 0;
        UINT32 segments = 0;
        EXPECT_EQ(geometry->GetFigureCount(&figures), S_OK);
        EXPECT_EQ(geometry->GetSegmentCount(&segments), S_OK);
        EXPECT_EQ(figures, 2U);
        EXPECT_EQ(segments, 5U); // three curves and the closing line; one line
    }
}

TEST(PathGeometry, isOneObjectWithItsSinkButHasAnotherIdentity) {
    OpenPath path = openPath();
    com_ptr<IUnknown> geometryIdentity;
    com_ptr<IUnknown> sinkIdentity;
    EXPECT_EQ(path.geometry->QueryInterface(&geometryIdentity), S_OK);
    EXPECT_EQ(path.sink->QueryInterface(&sinkIdentity), S_OK);
    EXPECT_NE(geometryIdentity.get(), sinkIdentity.get());
    com_ptr<ID2D1Geometry> geometry;
    com_ptr<ID2D1SimplifiedGeometrySink> sink;
    EXPECT_EQ(path.geometry->QueryInterface(&geometry), S_OK);
    EXPECT_EQ(path.sink->QueryInterface(&sink), S_OK);
    EXPECT_EQ(path.sink->QueryInterface(&geometry), E_NOINTERFACE);
    EXPECT_EQ(geometry.get(), nullptr);
    EXPECT_EQ(path.geometry->QueryInterface(&sink), E_NOINTERFACE);
    EXPECT_EQ(sink.get(), nullptr);
}

TEST(PathGeometry, livesAsLongAsItsSinkIsHeld) {
    OpenPath path = openPath();
    path.geometry = nullptr;
    path.sink->BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
    path.sink->AddLine({1, 1});
    path.sink->EndFigure(D2D1_FIGURE_END_CLOSED);
    EXPECT_EQ(path.sink->Close(), S_OK);
}

TEST(Geometry, knowsItsFactory) {
    const com_ptr<ID2D1Factory> factory = makeFactory();
    com_ptr<ID2D1PathGeometry> path;
    com_ptr<ID2D1RectangleGeometry> rectangle;
    ASSERT_EQ(factory->CreatePathGeometry(&path), S_OK);
    ASSERT_EQ(factory->CreateRectangleGeometry({0, 0, 1, 1}, &rectangle), S_OK);
    com_ptr<ID2D1Factory> asked;
    path->GetFactory(&asked);
    EXPECT_EQ(asked.get(), factory.get());
    rectangle->GetFactory(&asked);
    EXPECT_EQ(asked.get(), factory.get());
}

TEST(RectangleGeometry, givesAnyRectangleBackAsItWasGiven) {
    const com_ptr<ID2D1Factory> factory = makeFactory();
    for (const D2D1_RECT_F& given : {D2D1_RECT_F{1, 2, 3, 4}, D2D1_RECT_F{30, 40, 10, 20}, D2D1_RECT_F{5, 5, 5, 5}}) {
        com_ptr<ID2D1RectangleGeometry> rectangle;
        ASSERT_EQ(factory->CreateRectangleGeometry(&given, &rectangle), S_OK);
        expectRect(boundsOf(*rectangle), given.left, given.top, given.right, given.bottom);
        D2D1_RECT_F stored{};
        rectangle->GetRect(&stored);
        expectRect(stored, given.left, given.top, given.right, given.bottom);
    }
}

TEST(RectangleGeometry, ordersTheBoundsOfAMappedRectangle) {
    const com_ptr<ID2D1Factory> factory = makeFactory();
    com_ptr<ID2D1RectangleGeometry> rectangle;
    ASSERT_EQ(factory->CreateRectangleGeometry({30, 40, 10, 20}, &rectangle), S_OK);
    D2D1_MATRIX_3X2_F transform = moveBy(1, 2);
    expectRect(boundsOf(*rectangle, &transform), 11, 22, 31, 42);
    transform = {0, 2, -1, 0, 0, 5};
    expectRect(boundsOf(*rectangle, &transform), -40, 25, -20, 65);
}

TEST(RectangleGeometry, keepsThePlaceOfAnEmptyRectangle) {
    com_ptr<ID2D1RectangleGeometry> rectangle;
    ASSERT_EQ(makeFactory()->CreateRectangleGeometry({5, 6, 5, 6}, &rectangle), S_OK);
    const D2D1_MATRIX_3X2_F transform = moveBy(10, 20);
    expectRect(boundsOf(*rectangle, &transform), 15, 26, 15, 26);
}

TEST(Geometry, servesManyThreads) {
    const com_ptr<ID2D1Factory> factory = makeFactory();
    OpenPath shared = openPath();
    shared.sink->BeginFigure({0, 0}, D2D1_FIGURE_BEGIN_FILLED);
    shared.sink->AddBezier({{25, 100}, {75, 100}, {100, 0}});
    shared.sink->EndFigure(D2D1_FIGURE_END_CLOSED);
    ASSERT_EQ(shared.sink->Close(), S_OK);
    ID2D1PathGeometry* const geometry = shared.geometry;

    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&factory, geometry] {
            for (int i = 0; i < 1000; ++i) {
                com_ptr<ID2D1PathGeometry> held(geometry);
                expectRect(boundsOf(*held), 0, 0, 100, 75);
                com_ptr<ID2D1PathGeometry> own;
                com_ptr<ID2D1GeometrySink> sink;
                ASSERT_EQ(factory->CreatePathGeometry(&own), S_OK);
                ASSERT_EQ(own->Open(&sink), S_OK);
                ASSERT_EQ(sink->Close(), S_OK);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    shared.sink = nullptr;
    EXPECT_EQ(shared.geometry.detach()->Release(), 0U);
}

} // namespace
