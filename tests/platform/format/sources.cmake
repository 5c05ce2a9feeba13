list(APPEND PLATFORM_TESTS
    format/ForeignCollectionTest.cpp
    format/LaterFormatTest.cpp
    format/NameTest.cpp
    format/RangePropertiesTest.cpp
    format/TextFormatTest.cpp)
