list(APPEND PLATFORM_TESTS
    answers/DrawTest.cpp
    answers/EditingInvariantsTest.cpp
    answers/HitTestingTest.cpp
    answers/MetricsTest.cpp)
