list(APPEND PLATFORM_SOURCES
    src/unicode/BidiBrackets.cpp
    src/unicode/BidiLevels.cpp
    src/unicode/BreakIterator.cpp
    src/unicode/Graphemes.cpp
    src/unicode/ScriptRuns.cpp
    src/unicode/TextBuffer.cpp)
