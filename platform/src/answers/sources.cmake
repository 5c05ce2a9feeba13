list(APPEND PLATFORM_SOURCES
    src/answers/Decorations.cpp
    src/answers/HitTesting.cpp
    src/answers/Metrics.cpp
    src/answers/Renderer.cpp
    src/answers/Snapping.cpp
    src/answers/TextDrawing.cpp)
