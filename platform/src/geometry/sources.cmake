list(APPEND PLATFORM_SOURCES
    src/geometry/CurveBounds.cpp
    src/geometry/EllipticArc.cpp
    src/geometry/GeometryFactory.cpp
    src/geometry/GlyphExpander.cpp
    src/geometry/PathData.cpp
    src/geometry/PathGeometry.cpp
    src/geometry/RectangleGeometry.cpp)
