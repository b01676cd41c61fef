# Builds this folder's project with the newest clang and libc++ in BUILD_DIR and runs the identity test; says so and
# leaves it at that where they are not installed.

include("${CMAKE_CURRENT_LIST_DIR}/../../../cmake/gleigem_compilers.cmake")
gleigem_find_compilers(clangs clang++)
if(clangs)
    list(GET clangs 0 clang)
    set(probe "${BUILD_DIR}/probe.cpp")
    file(WRITE "${probe}" "#include <iostream>\nint main() { std::cout.flush(); }\n")
    execute_process(
        COMMAND "${clang}" -stdlib=libc++ "${probe}" -o "${BUILD_DIR}/probe"
        RESULT_VARIABLE failure OUTPUT_QUIET ERROR_QUIET)
endif()
if(NOT clangs OR failure)
    message("Skipped: no clang++ with libc++ is here (in Debian 12 and 13 clang-19, libc++-19-dev, libc++abi-19-dev).")
    return()
endif()

execute_process(
    COMMAND
        "${CTEST}" --build-and-test "${CMAKE_CURRENT_LIST_DIR}" "${BUILD_DIR}/build"
        --build-generator "${GENERATOR}" --build-noclean
        --build-options "-DCMAKE_CXX_COMPILER=${clang}" "-DCMAKE_CXX_FLAGS=-stdlib=libc++"
        -DCMAKE_COMPILE_WARNING_AS_ERROR=ON "-DGLEIGEM_SOURCE_DIR=${GLEIGEM_SOURCE_DIR}"
        --test-command identity_program
    COMMAND_ERROR_IS_FATAL ANY)
