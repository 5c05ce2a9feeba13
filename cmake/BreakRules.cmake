# Compiles rules for breaking text with ICU's genbrk, when the project is built, and makes C++ of the result.

pkg_get_variable(_icu_bin icu-uc bindir)
pkg_get_variable(_icu_sbin icu-uc sbindir)
find_program(FONTENGINE_GENBRK genbrk HINTS ${_icu_bin} ${_icu_sbin}
    DOC "ICU's compiler of break rules, of the same ICU that the platform layer links (Debian: icu-devtools)")
if(NOT FONTENGINE_GENBRK)
    message(FATAL_ERROR
        "genbrk, ICU's compiler of break rules, is missing: install icu-devtools (scripts/install-packages build does), "
        "or name it with -DFONTENGINE_GENBRK=PATH")
endif()

# fontengine_break_rules(VARIABLE NAME PART...): joins the parts, compiles them, and sets VARIABLE to a source file that
# defines platform::NAME, declared in unicode/BreakRules.h.
function(fontengine_break_rules VARIABLE NAME)
    set(_parts)
    foreach(_part IN LISTS ARGN)
        list(APPEND _parts "${CMAKE_CURRENT_SOURCE_DIR}/${_part}")
    endforeach()
    set(_base "${CMAKE_CURRENT_BINARY_DIR}/${NAME}")
    add_custom_command(OUTPUT "${_base}.cpp"
        COMMAND "${CMAKE_COMMAND}" "-DNAME=${NAME}" "-DPARTS=${_parts}" "-DBASE=${_base}"
            "-DGENBRK=${FONTENGINE_GENBRK}" -P "${PROJECT_SOURCE_DIR}/cmake/CompileBreakRules.cmake"
        DEPENDS ${_parts} "${PROJECT_SOURCE_DIR}/cmake/CompileBreakRules.cmake"
        COMMENT "Compiling break rules ${NAME}"
        VERBATIM)
    set(${VARIABLE} "${_base}.cpp" PARENT_SCOPE)
endfunction()
