# What callers observe and no test of one part of the platform says.
list(APPEND PLATFORM_TESTS
    facts/FormatsTest.cpp
    facts/LinesTest.cpp
    facts/DrawnRunsTest.cpp)
