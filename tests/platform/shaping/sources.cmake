list(APPEND PLATFORM_TESTS
    shaping/BreakOpportunitiesTest.cpp
    shaping/CharacterSpacingTest.cpp
    shaping/PairKerningTest.cpp
    shaping/RunFactsTest.cpp
    shaping/RunsTest.cpp
    shaping/ShaperTest.cpp
    shaping/SurrogatePairsTest.cpp
    shaping/WordShaperTest.cpp)
