# Debian's cross compilers, whose programs are run by qemu-user. scripts/matrix.sh sets these variables:
#
#   -DGLEIGEM_CROSS_COMPILER=  the prefix of the compiler's name, aarch64-linux-gnu
#   -DGLEIGEM_CROSS_FOLDER=    the name of Debian's library folder, usually the same
#   -DGLEIGEM_CROSS_EMULATOR=  qemu-aarch64
#   -DGLEIGEM_CROSS_ROOT=      the folder with the unpacked packages for that processor

set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES GLEIGEM_CROSS_COMPILER GLEIGEM_CROSS_FOLDER GLEIGEM_CROSS_EMULATOR
                                         GLEIGEM_CROSS_ROOT)

string(REGEX REPLACE "-.*" "" CMAKE_SYSTEM_PROCESSOR "${GLEIGEM_CROSS_COMPILER}")
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_CXX_COMPILER "${GLEIGEM_CROSS_COMPILER}-g++")
set(CMAKE_LIBRARY_ARCHITECTURE "${GLEIGEM_CROSS_FOLDER}")
set(CMAKE_CROSSCOMPILING_EMULATOR
    "${GLEIGEM_CROSS_EMULATOR};-L;/usr/${GLEIGEM_CROSS_COMPILER};-E"
    "LD_LIBRARY_PATH=${GLEIGEM_CROSS_ROOT}/usr/lib/${GLEIGEM_CROSS_FOLDER}")

set(CMAKE_FIND_ROOT_PATH "${GLEIGEM_CROSS_ROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# CMake derives this folder from the compiler, which is wrong if the packages are for another processor.
list(APPEND CMAKE_PREFIX_PATH "/usr/lib/${GLEIGEM_CROSS_FOLDER}/cmake")
string(CONCAT CMAKE_CXX_FLAGS_INIT "-isystem \"${GLEIGEM_CROSS_ROOT}/usr/include\" "
              "-isystem \"${GLEIGEM_CROSS_ROOT}/usr/include/${GLEIGEM_CROSS_FOLDER}\"")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-Wl,-rpath-link,\"${GLEIGEM_CROSS_ROOT}/usr/lib/${GLEIGEM_CROSS_FOLDER}\"")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${CMAKE_SHARED_LINKER_FLAGS_INIT}")
