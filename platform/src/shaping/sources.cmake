list(APPEND PLATFORM_SOURCES
    src/shaping/BreakOpportunities.cpp
    src/shaping/ClusterBuilder.cpp
    src/shaping/HostFallback.cpp
    src/shaping/Itemizer.cpp
    src/shaping/ShapedText.cpp
    src/shaping/Shaper.cpp
    src/shaping/Spacing.cpp
    src/shaping/WordPlan.cpp
    src/shaping/WordShaper.cpp
    src/shaping/WordStore.cpp)
