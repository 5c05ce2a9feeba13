list(APPEND PLATFORM_TESTS
    layout/LayoutTestSupport.cpp
    layout/MetricsTest.cpp)
