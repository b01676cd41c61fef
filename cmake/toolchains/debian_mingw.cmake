# Debian's compiler for 64-bit Windows, g++-mingw-w64-x86-64-posix, and wine to run the programs. The headers of Boost
# and range-v3 are in GLEIGEM_CROSS_ROOT, which has packages unpacked for any processor.

set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES GLEIGEM_CROSS_ROOT)

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
find_program(wine NAMES wine64 wine NO_CACHE)
if(wine)
    set(CMAKE_CROSSCOMPILING_EMULATOR "${wine}")
endif()

set(CMAKE_FIND_ROOT_PATH "${GLEIGEM_CROSS_ROOT}" /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu) # where the packages of headers have their files for CMake
