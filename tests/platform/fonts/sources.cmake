list(APPEND PLATFORM_TESTS
    fonts/BrokenFontsTest.cpp
    fonts/ChangingFontsTest.cpp
    fonts/FaceNamesTest.cpp
    fonts/FamilySubstitutesTest.cpp
    fonts/FontCollectionTest.cpp
    fonts/FontFaceTest.cpp
    fonts/FontFolderTest.cpp
    fonts/FontMatchingTest.cpp
    fonts/FontMetricsTest.cpp
    fonts/FontNamesTest.cpp
    fonts/FontThreadsTest.cpp
    fonts/GlyphRunOutlineTest.cpp
    fonts/HeadersTest.cpp
    fonts/PictureFontsTest.cpp
    fonts/SimulatedFontsTest.cpp
    fonts/SymbolFontsTest.cpp
    fonts/VariableFontsTest.cpp)
