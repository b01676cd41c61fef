# Common to all targets of this project: language level, hidden visibility and warnings.

include_guard()

set(gleigem_warnings -Wall -Wextra -Wpedantic -Wconversion -Wshadow CACHE INTERNAL "")

function(gleigem_configure_target target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(
        ${target}
        PROPERTIES CXX_EXTENSIONS OFF
                   CXX_SCAN_FOR_MODULES OFF
                   CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON
                   POSITION_INDEPENDENT_CODE ON)
    target_compile_options(${target} PRIVATE ${gleigem_warnings})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # A parent project may enable this warning, but ICU's macros cause it.
        target_compile_options(${target} PRIVATE -Wno-sign-conversion)
        # False positive of g++ 12 for an inlined `"text" + std::string`.
        if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
            target_compile_options(${target} PRIVATE -Wno-restrict)
        endif()
    endif()
endfunction()

# gleigem_mark_exports(TARGET PREFIX): defines the macros that control the export macros in TARGET's headers:
# PREFIX_BUILDING when a shared library is compiled; PREFIX_STATIC for a static library and its users.
function(gleigem_mark_exports target prefix)
    set_target_properties(${target} PROPERTIES DEFINE_SYMBOL ${prefix}_BUILDING)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL STATIC_LIBRARY)
        target_compile_definitions(${target} PUBLIC ${prefix}_STATIC)
    endif()
endfunction()
