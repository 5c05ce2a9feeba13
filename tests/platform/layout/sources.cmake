list(APPEND PLATFORM_TESTS
    layout/EllipsisSignTest.cpp
    layout/FactoryTest.cpp
    layout/LimitsTest.cpp
    layout/NoFontsTest.cpp)
