list(APPEND PLATFORM_SOURCES
    src/fallback/FallbackCluster.cpp
    src/fallback/FallbackMapper.cpp
    src/fallback/FallbackOrder.cpp
    src/fallback/FallbackOrderCache.cpp
    src/fallback/FontconfigOrder.cpp
    src/fallback/FontFallback.cpp
    src/fallback/Locale.cpp
    src/fallback/NearbyLetters.cpp
    src/fallback/SimpleCharacters.cpp
    src/fallback/SourceText.cpp)
