list(APPEND PLATFORM_TESTS
    fallback/DrawingSymbolsTest.cpp
    fallback/EmojiTest.cpp
    fallback/FallbackMapperTest.cpp
    fallback/FallbackOrderTest.cpp
    fallback/FallbackScriptsTest.cpp
    fallback/FontFallbackTest.cpp
    fallback/LanguagesTest.cpp
    fallback/LocaleTest.cpp
    fallback/SimpleCharactersTest.cpp)
