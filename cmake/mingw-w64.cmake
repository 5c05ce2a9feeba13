# Builds for Windows with Debian's MinGW-w64, and runs what it builds under Wine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(_target x86_64-w64-mingw32)

# The compilers with POSIX threads: the others have no std::mutex.
set(CMAKE_C_COMPILER ${_target}-gcc-posix)
set(CMAKE_CXX_COMPILER ${_target}-g++-posix)
set(CMAKE_RC_COMPILER ${_target}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${_target})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The compiler's own libraries inside every program and library: nothing but the
# system's DLLs has to be there where they run.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)

# Made with the tests, whose fonts it shows to the programs.
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_BINARY_DIR}/run-wine")

# Libraries of headers alone serve every target. Each gets a folder of its own in the
# build tree: the folder they are installed in holds the build machine's headers too.
set(FONTENGINE_HOST_HEADERS "${CMAKE_BINARY_DIR}/host-headers")
foreach(_library IN ITEMS boost nlohmann CLI)
    if(NOT EXISTS "${FONTENGINE_HOST_HEADERS}/${_library}/${_library}")
        file(MAKE_DIRECTORY "${FONTENGINE_HOST_HEADERS}/${_library}")
        file(CREATE_LINK "/usr/include/${_library}" "${FONTENGINE_HOST_HEADERS}/${_library}/${_library}" SYMBOLIC)
    endif()
endforeach()
set(Boost_NO_BOOST_CMAKE ON)
set(Boost_INCLUDE_DIR "${FONTENGINE_HOST_HEADERS}/boost" CACHE PATH "Boost's headers")
