# How this project's own targets are made, in one place.

# How our targets are compiled and linked where they are optimised; no host's target sees it. Lists, so that the tests
# hold them in every build.
set(FONTENGINE_OPTIMISED_OPTIONS)
set(FONTENGINE_OPTIMISED_LINK_OPTIONS)
if(NOT MSVC)
    # A product is rounded before it is added, whatever the processor could do in one step: the same text has the same
    # box in every build.
    list(APPEND FONTENGINE_OPTIMISED_OPTIONS -ffp-contract=off)
endif()
if(FONTENGINE_HARDENING AND UNIX AND NOT APPLE AND NOT FONTENGINE_SANITIZE)
    list(APPEND FONTENGINE_OPTIMISED_OPTIONS -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i[3-6]86)$")
        list(APPEND FONTENGINE_OPTIMISED_OPTIONS -fcf-protection)
    endif()
    list(APPEND FONTENGINE_OPTIMISED_LINK_OPTIONS -Wl,-z,relro,-z,now)
endif()

# Gives TARGET our language standard, visibility, warnings and sanitizers.
function(fontengine_settings TARGET)
    target_compile_features(${TARGET} PUBLIC cxx_std_20)
    set_target_properties(${TARGET} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON)
    # The source path in messages is cut down to the part below this root.
    target_compile_definitions(${TARGET} PRIVATE FONTENGINE_SOURCE_ROOT="${PROJECT_SOURCE_DIR}/")
    if(NOT MSVC)
        # Where the sources lie, and how long that path is, changes nothing of what is built. (Debuggers need it.)
        target_compile_options(${TARGET} PRIVATE
            "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/="
            "$<$<NOT:$<CONFIG:Debug>>:-fdebug-prefix-map=${PROJECT_SOURCE_DIR}=.>"
            "$<$<NOT:$<CONFIG:Debug>>:-fdebug-prefix-map=${PROJECT_BINARY_DIR}=.>")
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND FONTENGINE_ELF)
        # A library with symbols that are unique in the process is never unloaded.
        target_compile_options(${TARGET} PRIVATE -fno-gnu-unique)
    endif()
    if(MSVC)
        # Exported classes hold standard ones and derive from them: library and host share one runtime,
        # so the warnings that those are not exported (C4251, C4275) say nothing.
        target_compile_options(${TARGET} PRIVATE
            /W4 /wd4251 /wd4275 /utf-8 $<$<BOOL:${FONTENGINE_WERROR}>:/WX>)
        # <windows.h> would make std::min and std::max unusable.
        target_compile_definitions(${TARGET} PRIVATE NOMINMAX)
    else()
        target_compile_options(${TARGET} PRIVATE
            -Wall -Wextra -Wpedantic -Wconversion
            $<$<BOOL:${FONTENGINE_WERROR}>:-Werror>)
        # GCC 12 sees overlapping copies in every optimised `"text" + string` (its bug 105651).
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
            target_compile_options(${TARGET} PRIVATE -Wno-restrict)
        endif()
        # Clang wants the braces of an array in a structure that the language lets one leave out, and warns of
        # operations of one name in classes above each other, which the platform's interfaces have.
        if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
            target_compile_options(${TARGET} PRIVATE -Wno-missing-braces -Wno-overloaded-virtual)
        endif()
    endif()
    target_compile_options(${TARGET} PRIVATE "$<$<NOT:$<CONFIG:Debug>>:${FONTENGINE_OPTIMISED_OPTIONS}>")
    target_link_options(${TARGET} PRIVATE "$<$<NOT:$<CONFIG:Debug>>:${FONTENGINE_OPTIMISED_LINK_OPTIONS}>")
    if(FONTENGINE_SANITIZE)
        target_compile_options(${TARGET} PRIVATE
            -fsanitize=${FONTENGINE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
        target_link_options(${TARGET} PRIVATE -fsanitize=${FONTENGINE_SANITIZE})
    endif()
endfunction()

# A static component: its folder is its include root (<Common/UUID.h> lies in
# Common/Common). Components end up inside FontEngine::FontEngine, which exports
# from them what FONTENGINE_API marks.
function(fontengine_component TARGET)
    add_library(${TARGET} STATIC ${ARGN})
    fontengine_settings(${TARGET})
    target_compile_definitions(${TARGET} PRIVATE FONTENGINE_BUILD)
endfunction()

# One test program per folder of tests/, run with the pinned fonts only.
# fontengine_test(NAME SOURCES a.cpp b.cpp LIBRARIES x y [LABELS linux])
function(fontengine_test NAME)
    cmake_parse_arguments(TEST "" "" "SOURCES;LIBRARIES;LABELS" ${ARGN})
    add_executable(${NAME} ${TEST_SOURCES})
    fontengine_settings(${NAME})
    target_include_directories(${NAME} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(${NAME} PRIVATE ${TEST_LIBRARIES} GTest::gmock GTest::gtest_main)
    target_compile_definitions(${NAME} PRIVATE
        FONTENGINE_TEST_DATA="${PROJECT_SOURCE_DIR}/tests"
        FONTENGINE_TEST_FONTS="${FONTENGINE_TEST_FONTS}")
    if(CMAKE_CROSSCOMPILING)
        # Under Wine starting a program takes longer than most tests: all in one.
        add_test(NAME ${NAME} COMMAND ${NAME} --gtest_brief=1)
        # Wine hands a crash on as any exit code, 0 among them: only the summary counts.
        set_tests_properties(${NAME} PROPERTIES TIMEOUT 600
            PASS_REGULAR_EXPRESSION "\\[  PASSED  \\]"
            FAIL_REGULAR_EXPRESSION "\\[  FAILED  \\]")
        return()
    endif()
    set(_properties ENVIRONMENT "FONTCONFIG_FILE=${FONTENGINE_TEST_FONTCONFIG}" TIMEOUT 300)
    if(TEST_LABELS)
        list(APPEND _properties LABELS "${TEST_LABELS}")
    endif()
    gtest_discover_tests(${NAME}
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 120
        PROPERTIES ${_properties})
endfunction()
