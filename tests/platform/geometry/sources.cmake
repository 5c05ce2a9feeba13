list(APPEND PLATFORM_TESTS
    geometry/CurveBoundsTest.cpp
    geometry/GeometryTest.cpp
    geometry/GlyphLaneTest.cpp
    geometry/UuidTest.cpp)
