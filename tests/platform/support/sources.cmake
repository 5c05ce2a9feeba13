list(APPEND PLATFORM_TESTS
    support/Fonts.cpp
    support/NumberedFonts.cpp)
