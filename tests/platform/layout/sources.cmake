list(APPEND PLATFORM_TESTS
    layout/AlignmentTest.cpp
    layout/BreaksAndShapesTest.cpp
    layout/DrawTest.cpp
    layout/FactoryTest.cpp
    layout/HitTestTest.cpp
    layout/InlineObjectTest.cpp
    layout/LayoutTestSupport.cpp
    layout/LimitsTest.cpp
    layout/LineBreakingTest.cpp
    layout/MetricsTest.cpp
    layout/NoFontsTest.cpp
    layout/RangePropertiesTest.cpp
    layout/RunsTest.cpp
    layout/ShaperTest.cpp
    layout/StagesTest.cpp
    layout/TextFormatTest.cpp
    layout/TrimmingTest.cpp)
