# What every target of this project has in common: the language level, hidden visibility and the warnings.

include_guard()

function(gleigem_configure_target target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(
        ${target}
        PROPERTIES CXX_EXTENSIONS OFF
                   CXX_SCAN_FOR_MODULES OFF
                   CXX_VISIBILITY_PRESET hidden
                   POSITION_INDEPENDENT_CODE ON)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endfunction()
