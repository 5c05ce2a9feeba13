# The libraries that hosts link, and the package that find_package(FontEngine) finds.
#
# A library and its kind: shared or static, as FONTENGINE_KIND says. Objects are compiled once, so the other kind costs
# a link; FONTENGINE_OTHER_KIND, which the tests of hosts set, has it made and installed beside the first, below the
# folder other-kind.

set(_fontengine_cmake "${CMAKE_CURRENT_LIST_DIR}")
if(FONTENGINE_INSTALL)
    include(CMakePackageConfigHelpers)
    include(GNUInstallDirs)
endif()

# fontengine_library(COMPONENT DESCRIPTION ... OBJECTS ... HEADERS ... [NAMES ...] [SYSTEM_HEADERS ...] [USES ...]
#                    [PUBLIC ...] [PRIVATE ...] [PC_PRIVATE ...])
# makes the target fontengine_COMPONENT and its alias FontEngine::COMPONENT.
#   OBJECTS         libraries whose objects it consists of
#   HEADERS         folders of headers; hosts include them as <FOLDER/NAME.h>
#   SYSTEM_HEADERS  folders whose headers hosts include as <NAME.h>
#   NAMES           what a shared library exports: C functions, namespaces and classes (NAME::), C++ functions (NAME*)
#   USES            components below this one
#   PUBLIC PRIVATE  other libraries
#   PC_PRIVATE      the private ones in the words of pkg-config
function(fontengine_library COMPONENT)
    cmake_parse_arguments(LIBRARY "" "DESCRIPTION"
        "OBJECTS;HEADERS;SYSTEM_HEADERS;NAMES;USES;PUBLIC;PRIVATE;PC_PRIVATE" ${ARGN})
    string(TOLOWER "fontengine_${COMPONENT}" _target)
    _fontengine_library_of(${FONTENGINE_KIND} ${_target} "" "")
    add_library(FontEngine::${COMPONENT} ALIAS ${_target})
    if(FONTENGINE_OTHER_KIND)
        _fontengine_library_of(${FONTENGINE_OTHER_KIND} ${_target}_other_kind _other_kind "other-kind/")
    endif()
endfunction()

# One of a library's kinds; reads the arguments of fontengine_library.
function(_fontengine_library_of KIND TARGET SUFFIX PREFIX)
    set(_uses ${LIBRARY_USES})
    list(TRANSFORM _uses TOLOWER)
    list(TRANSFORM _uses PREPEND fontengine_)
    list(TRANSFORM _uses APPEND "${SUFFIX}")

    add_library(${TARGET} ${KIND})
    fontengine_settings(${TARGET})
    set(_name FontEngine)
    if(NOT COMPONENT STREQUAL "FontEngine")
        set(_name FontEngine-${COMPONENT})
    endif()
    # The package promises that versions of one minor number fit each other, and so does the name that is loaded.
    set_target_properties(${TARGET} PROPERTIES
        OUTPUT_NAME ${_name}
        EXPORT_NAME ${COMPONENT}
        LINKER_LANGUAGE CXX
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
        INSTALL_RPATH "$<$<BOOL:${FONTENGINE_ELF}>:$ORIGIN>")
    if(WIN32 AND KIND STREQUAL "SHARED")
        # FontEngine.dll, whichever compiler makes it.
        set_target_properties(${TARGET} PROPERTIES PREFIX "")
    endif()
    foreach(_objects IN LISTS LIBRARY_OBJECTS)
        target_sources(${TARGET} PRIVATE $<TARGET_OBJECTS:${_objects}>)
    endforeach()
    _fontengine_include_directories(${TARGET} "${PREFIX}")
    target_link_libraries(${TARGET} PUBLIC ${_uses} ${LIBRARY_PUBLIC} PRIVATE ${LIBRARY_PRIVATE})
    if(KIND STREQUAL "SHARED" AND FONTENGINE_ELF)
        _fontengine_export(${TARGET} ${LIBRARY_NAMES})
    endif()
    if(FONTENGINE_INSTALL)
        _fontengine_install(${KIND} ${TARGET} "${SUFFIX}" "${PREFIX}")
    endif()
endfunction()

function(_fontengine_include_directories TARGET PREFIX)
    foreach(_folder IN LISTS LIBRARY_HEADERS)
        get_filename_component(_root "${_folder}" ABSOLUTE)
        get_filename_component(_root "${_root}" DIRECTORY)
        target_include_directories(${TARGET} PUBLIC "$<BUILD_INTERFACE:${_root}>")
    endforeach()
    foreach(_folder IN LISTS LIBRARY_SYSTEM_HEADERS)
        get_filename_component(_root "${_folder}" ABSOLUTE)
        target_include_directories(${TARGET} PUBLIC "$<BUILD_INTERFACE:${_root}>")
    endforeach()
    if(FONTENGINE_INSTALL)
        set(_installed "${PREFIX}${CMAKE_INSTALL_INCLUDEDIR}/fontengine")
        target_include_directories(${TARGET} PUBLIC "$<INSTALL_INTERFACE:${_installed}>")
        if(LIBRARY_SYSTEM_HEADERS)
            target_include_directories(${TARGET} PUBLIC "$<INSTALL_INTERFACE:${_installed}/platform>")
        endif()
    endif()
endfunction()

# A shared library exports what it offers: not what visibility alone leaves to see, the instances of standard templates
# and Boost's types among it. Names carry the version, so that two of them can live in one process.
function(_fontengine_export TARGET)
    set(_functions)
    set(_names)
    foreach(_name IN LISTS ARGN)
        if(_name MATCHES "^(.*)::$")
            string(APPEND _names "        ${_name}*;\n")
            # A question mark stands for the blank, which a pattern cannot hold.
            foreach(_of IN ITEMS typeinfo?for typeinfo?name?for vtable?for)
                string(APPEND _names "        ${_of}?${_name}*;\n        ${_of}?${CMAKE_MATCH_1};\n")
            endforeach()
        elseif(_name MATCHES "[*]$")
            string(APPEND _names "        ${_name};\n")
        else()
            string(APPEND _functions "    ${_name};\n")
        endif()
    endforeach()
    set(_script "${CMAKE_CURRENT_BINARY_DIR}/${TARGET}.map")
    file(CONFIGURE OUTPUT "${_script}" CONTENT
"FONTENGINE_${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR} {
global:
${_functions}    extern \"C++\" {
${_names}    };
local:
    *;
};
")
    target_link_options(${TARGET} PRIVATE "LINKER:--version-script=${_script}")
    set_target_properties(${TARGET} PROPERTIES LINK_DEPENDS "${_script}")
endfunction()

# The other kind is installed only when it is asked for by its name.
function(_fontengine_install KIND TARGET SUFFIX PREFIX)
    set(_component)
    if(SUFFIX)
        set(_component COMPONENT fontengine_other_kind EXCLUDE_FROM_ALL)
    endif()
    set(_libraries "${PREFIX}${CMAKE_INSTALL_LIBDIR}")
    set(_headers "${PREFIX}${CMAKE_INSTALL_INCLUDEDIR}/fontengine")
    set(_package "${_libraries}/cmake/FontEngine")
    set(_export FontEngine-${COMPONENT}${SUFFIX})

    install(TARGETS ${TARGET} EXPORT ${_export}
        ARCHIVE DESTINATION "${_libraries}" ${_component}
        LIBRARY DESTINATION "${_libraries}" ${_component}
        RUNTIME DESTINATION "${PREFIX}${CMAKE_INSTALL_BINDIR}" ${_component})
    install(EXPORT ${_export} NAMESPACE FontEngine:: FILE FontEngine-${COMPONENT}Targets.cmake
        DESTINATION "${_package}" ${_component})
    foreach(_folder IN LISTS LIBRARY_HEADERS)
        install(DIRECTORY "${_folder}" DESTINATION "${_headers}" ${_component} FILES_MATCHING PATTERN "*.h")
    endforeach()
    foreach(_folder IN LISTS LIBRARY_SYSTEM_HEADERS)
        install(DIRECTORY "${_folder}/" DESTINATION "${_headers}/platform" ${_component} FILES_MATCHING PATTERN "*.h")
    endforeach()
    _fontengine_install_pc(${KIND} "${_libraries}" "${SUFFIX}" ${_component})
endfunction()

# The same for pkg-config. What is private in a shared library is linked by the hosts of a static one.
function(_fontengine_install_pc KIND LIBRARIES SUFFIX)
    set(FONTENGINE_PC_NAME fontengine)
    if(NOT COMPONENT STREQUAL "FontEngine")
        set(FONTENGINE_PC_NAME fontengine-${COMPONENT})
    endif()
    set(FONTENGINE_PC_DESCRIPTION "${LIBRARY_DESCRIPTION}")
    get_target_property(FONTENGINE_PC_LIBRARY ${TARGET} OUTPUT_NAME)
    file(RELATIVE_PATH FONTENGINE_PC_PREFIX "/${LIBRARIES}/pkgconfig" "/${PREFIX}")
    file(RELATIVE_PATH FONTENGINE_PC_LIBRARIES "/${PREFIX}" "/${LIBRARIES}")
    set(_requires)
    foreach(_used IN LISTS LIBRARY_USES)
        list(APPEND _requires "fontengine = ${PROJECT_VERSION}")
    endforeach()
    set(_requires_private ${LIBRARY_PC_PRIVATE})
    set(FONTENGINE_PC_LIBS_PRIVATE "")
    if(KIND STREQUAL "STATIC")
        list(APPEND _requires ${_requires_private})
        set(_requires_private)
        set(FONTENGINE_PC_LIBS_PRIVATE " -pthread")
    endif()
    list(JOIN _requires ", " FONTENGINE_PC_REQUIRES)
    list(JOIN _requires_private ", " FONTENGINE_PC_REQUIRES_PRIVATE)
    set(_file "${CMAKE_CURRENT_BINARY_DIR}/pkgconfig${SUFFIX}/${FONTENGINE_PC_NAME}.pc")
    configure_file("${_fontengine_cmake}/fontengine.pc.in" "${_file}" @ONLY)
    install(FILES "${_file}" DESTINATION "${LIBRARIES}/pkgconfig" ${ARGN})
endfunction()

# What find_package reads first: once, after all components. COMPONENTS are those that the package holds.
function(fontengine_package)
    if(NOT FONTENGINE_INSTALL)
        return()
    endif()
    set(FONTENGINE_PACKAGE_COMPONENTS ${ARGN})
    _fontengine_package_of(${FONTENGINE_KIND} "" "")
    if(FONTENGINE_OTHER_KIND)
        _fontengine_package_of(${FONTENGINE_OTHER_KIND} _other_kind "other-kind/" COMPONENT fontengine_other_kind
            EXCLUDE_FROM_ALL)
    endif()
endfunction()

function(_fontengine_package_of FONTENGINE_PACKAGE_KIND SUFFIX PREFIX)
    set(_package "${PREFIX}${CMAKE_INSTALL_LIBDIR}/cmake/FontEngine")
    set(_folder "${PROJECT_BINARY_DIR}/package${SUFFIX}")
    configure_package_config_file("${_fontengine_cmake}/FontEngineConfig.cmake.in" "${_folder}/FontEngineConfig.cmake"
        INSTALL_DESTINATION "${_package}")
    write_basic_package_version_file("${_folder}/FontEngineConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
    install(FILES "${_folder}/FontEngineConfig.cmake" "${_folder}/FontEngineConfigVersion.cmake"
        DESTINATION "${_package}" ${ARGN})
endfunction()

# An installed program finds the libraries from where it lies.
function(fontengine_program_run_path TARGET)
    if(FONTENGINE_ELF AND FONTENGINE_INSTALL)
        file(RELATIVE_PATH _libraries "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
        set_target_properties(${TARGET} PROPERTIES INSTALL_RPATH "$ORIGIN/${_libraries}")
    endif()
endfunction()
