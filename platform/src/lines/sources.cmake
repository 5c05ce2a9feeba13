list(APPEND PLATFORM_SOURCES
    src/lines/ClusterStream.cpp
    src/lines/Ink.cpp
    src/lines/LineBreaker.cpp
    src/lines/LineHeights.cpp
    src/lines/LinePieces.cpp
    src/lines/LinePlacement.cpp
    src/lines/TextPipeline.cpp
    src/lines/Trimming.cpp)
