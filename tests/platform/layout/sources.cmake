list(APPEND PLATFORM_TESTS
    layout/AlignmentTest.cpp
    layout/DrawTest.cpp
    layout/FactoryTest.cpp
    layout/LayoutTestSupport.cpp
    layout/LineBreakingTest.cpp
    layout/MetricsTest.cpp
    layout/RangePropertiesTest.cpp
    layout/RunsTest.cpp
    layout/TextFormatTest.cpp)
