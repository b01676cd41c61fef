# What every target of this project has in common: the language level, hidden visibility and the warnings.

include_guard()

set(gleigem_warnings -Wall -Wextra -Wpedantic -Wconversion -Wshadow CACHE INTERNAL "")

function(gleigem_configure_target target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(
        ${target}
        PROPERTIES CXX_EXTENSIONS OFF
                   CXX_SCAN_FOR_MODULES OFF
                   CXX_VISIBILITY_PRESET hidden
                   POSITION_INDEPENDENT_CODE ON)
    target_compile_options(${target} PRIVATE ${gleigem_warnings})
    # g++ 12 mistakes an inlined `"text" + std::string` for a copy onto itself.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
endfunction()
