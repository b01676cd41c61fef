# The newest installed clang.

include("${CMAKE_CURRENT_LIST_DIR}/../gleigem_compilers.cmake")
gleigem_find_compilers(clangs clang++)
if(NOT clangs)
    message(FATAL_ERROR "clang++ is not installed.")
endif()
list(GET clangs 0 CMAKE_CXX_COMPILER)
