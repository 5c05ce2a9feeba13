list(APPEND PLATFORM_TESTS
    support/Fonts.cpp
    support/LayoutTestSupport.cpp
    support/NumberedFonts.cpp)
