list(APPEND PLATFORM_SOURCES
    src/lines/ClusterStream.cpp
    src/lines/Ink.cpp
    src/lines/ItemPieces.cpp
    src/lines/LineBreaker.cpp
    src/lines/LineHeights.cpp
    src/lines/LinePlacement.cpp
    src/lines/TextPipeline.cpp
    src/lines/Trimming.cpp)
