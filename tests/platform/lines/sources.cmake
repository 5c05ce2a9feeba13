list(APPEND PLATFORM_TESTS
    lines/AlignmentTest.cpp
    lines/BreaksAndShapesTest.cpp
    lines/InlineObjectTest.cpp
    lines/JustificationTest.cpp
    lines/LineBreakingTest.cpp
    lines/RightToLeftTest.cpp
    lines/TabsTest.cpp
    lines/TrimmingTest.cpp)
