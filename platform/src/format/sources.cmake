list(APPEND PLATFORM_SOURCES
    src/format/FormatSettings.cpp
    src/format/Name.cpp
    src/format/ParagraphSettings.cpp
    src/format/RangeProperties.cpp
    src/format/TextFormat.cpp
    src/format/Typography.cpp)
