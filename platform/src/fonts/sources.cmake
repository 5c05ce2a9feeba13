list(APPEND PLATFORM_SOURCES
    src/fonts/GlyphBoundsCache.cpp
    src/fonts/LocalizedStrings.cpp)
