# Included by gleigem_install: adds the platform to installed_targets and pkgconfig_libraries, or sets found_platform to
# the name of an installed one.

if(NOT GLEIGEM_PLATFORM_TARGET)
    list(APPEND installed_targets gleigem_platform)
    string(APPEND pkgconfig_libraries " -lgleigem_platform")
    return()
endif()

get_target_property(is_found ${GLEIGEM_PLATFORM_TARGET} IMPORTED)
if(is_found)
    set(found_platform ${GLEIGEM_PLATFORM_TARGET})
    return()
endif()

get_target_property(platform ${GLEIGEM_PLATFORM_TARGET} ALIASED_TARGET)
if(NOT platform)
    set(platform ${GLEIGEM_PLATFORM_TARGET})
endif()

# CMake's own errors for a platform that cannot be installed refer to files that the host does not know.
set(remedy "docs/porting.md shows how; or turn GLEIGEM_INSTALL off.")
get_target_property(file_sets ${platform} INTERFACE_HEADER_SETS)
if(NOT HEADERS IN_LIST file_sets)
    message(FATAL_ERROR
        "GLEIGEM_INSTALL is on, and the platform target ${platform} does not say which of its headers to install: "
        "give it a public FILE_SET HEADERS. ${remedy}")
endif()
get_target_property(include_directories ${platform} INTERFACE_INCLUDE_DIRECTORIES)
foreach(directory IN LISTS include_directories)
    cmake_path(IS_PREFIX CMAKE_SOURCE_DIR "${directory}" NORMALIZE is_ours)
    if(is_ours)
        message(FATAL_ERROR
            "GLEIGEM_INSTALL is on, and the platform target ${platform} has an include directory that is not there "
            "once it is installed: ${directory}. A FILE_SET HEADERS brings its directory along. ${remedy}")
    endif()
endforeach()

list(APPEND installed_targets ${platform})
get_target_property(type ${platform} TYPE)
if(NOT type STREQUAL INTERFACE_LIBRARY)
    get_target_property(name ${platform} OUTPUT_NAME)
    if(NOT name)
        set(name ${platform})
    endif()
    string(APPEND pkgconfig_libraries " -l${name}")
endif()
