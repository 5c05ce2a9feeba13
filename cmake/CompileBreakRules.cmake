# Run by cmake -P with NAME, PARTS, BASE and GENBRK: see BreakRules.cmake.

set(_rules "")
foreach(_part IN LISTS PARTS)
    file(READ "${_part}" _text)
    string(APPEND _rules "${_text}")
endforeach()
file(WRITE "${BASE}.txt" "${_rules}")

execute_process(COMMAND "${GENBRK}" -r "${BASE}.txt" -o "${BASE}.brk"
    RESULT_VARIABLE _result OUTPUT_VARIABLE _output ERROR_VARIABLE _output)
if(NOT _result EQUAL 0)
    message(FATAL_ERROR "${GENBRK} does not take ${BASE}.txt, which is ${PARTS}, joined:\n${_output}")
endif()

file(READ "${BASE}.brk" _bytes HEX)
file(SIZE "${BASE}.brk" _size)
string(REGEX REPLACE "(................................)" "\\1\n    " _bytes "${_bytes}")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," _bytes "${_bytes}")
file(WRITE "${BASE}.cpp" "#include \"unicode/BreakRules.h\"

namespace platform {

namespace {

alignas(16) constexpr std::uint8_t bytes[] = {
    ${_bytes}
};

} // namespace

const BreakRules ${NAME}{bytes, ${_size}};

} // namespace platform
")
