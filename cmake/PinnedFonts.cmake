# Tests and benchmarks see the fonts of these Debian packages and no others,
# whatever else the machine has: links to their files in the build tree, and a
# Fontconfig file that names only that folder.
#
# Sets FONTENGINE_TEST_FONTS (the folder) and FONTENGINE_TEST_FONTCONFIG (the file).

set(_packages fonts-dejavu-core fonts-dejavu-extra fonts-liberation fonts-noto-core fonts-noto-cjk)
set(FONTENGINE_TEST_FONTS "${PROJECT_BINARY_DIR}/pinned-fonts/fonts")
set(FONTENGINE_TEST_FONTCONFIG "${PROJECT_BINARY_DIR}/pinned-fonts/fonts.conf")

if(NOT EXISTS "${FONTENGINE_TEST_FONTCONFIG}")
    file(MAKE_DIRECTORY "${FONTENGINE_TEST_FONTS}")
    foreach(_package IN LISTS _packages)
        execute_process(COMMAND dpkg -L ${_package}
            OUTPUT_VARIABLE _files RESULT_VARIABLE _result ERROR_QUIET)
        if(NOT _result EQUAL 0)
            message(FATAL_ERROR "The pinned font package ${_package} is not installed; scripts/test installs it.")
        endif()
        string(REGEX MATCHALL "[^\n]+\\.(ttf|otf|ttc)" _fonts "${_files}")
        file(MAKE_DIRECTORY "${FONTENGINE_TEST_FONTS}/${_package}")
        foreach(_font IN LISTS _fonts)
            get_filename_component(_name "${_font}" NAME)
            file(CREATE_LINK "${_font}" "${FONTENGINE_TEST_FONTS}/${_package}/${_name}" SYMBOLIC)
        endforeach()
    endforeach()
    configure_file("${CMAKE_CURRENT_LIST_DIR}/fonts.conf.in" "${FONTENGINE_TEST_FONTCONFIG}" @ONLY)
endif()
