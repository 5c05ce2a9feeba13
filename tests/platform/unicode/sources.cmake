# Unicode's own test files, which Debian packages.
set(FONTENGINE_UNICODE_DATA "/usr/share/unicode" CACHE PATH "The folder of the Debian package unicode-data")
set(UNICODE_TESTS
    unicode/BidiFilesTest.cpp
    unicode/GraphemeFilesTest.cpp
    unicode/LineBreakFileTest.cpp
    unicode/MirroringFileTest.cpp
    unicode/UnicodeFile.cpp)
list(APPEND PLATFORM_TESTS
    ${UNICODE_TESTS}
    unicode/BidiBracketsTest.cpp
    unicode/BidiLevelsTest.cpp
    unicode/BidiParagraphsTest.cpp
    unicode/GraphemesTest.cpp
    unicode/ScriptRunsTest.cpp
    unicode/TextBufferTest.cpp)
set_source_files_properties(unicode/UnicodeFile.cpp PROPERTIES
    COMPILE_DEFINITIONS "FONTENGINE_UNICODE_DATA=\"${FONTENGINE_UNICODE_DATA}\"")
