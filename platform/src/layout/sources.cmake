list(APPEND PLATFORM_SOURCES
    src/layout/EllipsisSign.cpp
    src/layout/TextLayout.cpp
    src/layout/TextLayoutStyles.cpp)
