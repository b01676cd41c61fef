# Installs the library with its public headers, and the files for find_package(gleigem) and pkg-config. Also installs
# the platform, the reference platform or the host's own, unless the host has found an installed one. Component Runtime
# contains what programs need at run time; Development, what is needed to build and debug them.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/gleigem")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
set(include_dir "${CMAKE_INSTALL_INCLUDEDIR}/gleigem")

set(installed_targets gleigem gleigem_host)
set(pkgconfig_libraries "-lgleigem")
set(found_platform "")
include(gleigem_install_platform)

# Users of a static platform library need the reference platform's dependency, too.
set(pkgconfig_requirements "")
set(static_dependencies "")
if(gleigem_library_type STREQUAL STATIC AND NOT GLEIGEM_PLATFORM_TARGET)
    set(pkgconfig_requirements "Requires.private: icu-uc")
    set(static_dependencies "find_dependency(ICU COMPONENTS uc)")
endif()

# The library finds the platform in its own folder, even if the installed tree is moved.
if(APPLE)
    set_property(TARGET gleigem APPEND PROPERTY INSTALL_RPATH "@loader_path")
elseif(NOT WIN32)
    set_property(TARGET gleigem APPEND PROPERTY INSTALL_RPATH "$ORIGIN")
endif()
install(
    TARGETS ${installed_targets}
    EXPORT gleigemTargets
    RUNTIME COMPONENT Runtime
    LIBRARY COMPONENT Runtime
            NAMELINK_COMPONENT Development
    ARCHIVE COMPONENT Development
    FILE_SET HEADERS
    DESTINATION "${include_dir}"
    COMPONENT Development)
install(
    EXPORT gleigemTargets
    NAMESPACE gleigem::
    DESTINATION "${package_dir}"
    COMPONENT Development)

# The test kit has its own set, since programs do not need the dependencies of its static libraries.
set(testing_targets gleigem_host_testing)
set(testing_dependencies "")
if(TARGET gleigem_recorded)
    list(APPEND testing_targets gleigem_recording_platform gleigem_recorded)
    set(testing_dependencies "find_dependency(ICU COMPONENTS uc)")
endif()
install(
    TARGETS ${testing_targets}
    EXPORT gleigemTestingTargets
    ARCHIVE COMPONENT Development
    FILE_SET HEADERS
    DESTINATION "${include_dir}"
    COMPONENT Development)
install(
    EXPORT gleigemTestingTargets
    NAMESPACE gleigem::
    DESTINATION "${package_dir}"
    COMPONENT Development)

configure_package_config_file(
    cmake/gleigemConfig.cmake.in "${PROJECT_BINARY_DIR}/gleigemConfig.cmake"
    INSTALL_DESTINATION "${package_dir}"
    NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/gleigemConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/gleigemConfig.cmake"
              "${PROJECT_BINARY_DIR}/gleigemConfigVersion.cmake"
        DESTINATION "${package_dir}"
        COMPONENT Development)

# Relative to the file, so that the installed tree can be moved; absolute folders given by the packager are kept.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(pkgconfig_prefix "${CMAKE_INSTALL_PREFIX}")
else()
    file(RELATIVE_PATH pkgconfig_prefix "/${pkgconfig_dir}" "/")
    string(REGEX REPLACE "/$" "" pkgconfig_prefix "${pkgconfig_prefix}")
    string(PREPEND pkgconfig_prefix "\${pcfiledir}/")
endif()
# pkg-config itself escapes blanks in pcfiledir; blanks in absolute folders are escaped here.
foreach(folder LIBDIR INCLUDEDIR)
    cmake_path(APPEND pkgconfig_${folder} "\${prefix}" "${CMAKE_INSTALL_${folder}}")
    string(REPLACE " " "\\ " pkgconfig_${folder} "${pkgconfig_${folder}}")
endforeach()
string(REPLACE " " "\\ " pkgconfig_prefix "${pkgconfig_prefix}")
configure_file(cmake/gleigem.pc.in "${PROJECT_BINARY_DIR}/gleigem.pc" @ONLY)
install(
    FILES "${PROJECT_BINARY_DIR}/gleigem.pc"
    DESTINATION "${pkgconfig_dir}"
    COMPONENT Development)

# gdb finds the printers by the path of the library, so this uses the installed path.
if(gleigem_library_type STREQUAL SHARED AND NOT WIN32 AND NOT APPLE)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
        set(debugged_dir "${CMAKE_INSTALL_LIBDIR}")
    else()
        set(debugged_dir "/\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}")
    endif()
    install(
        FILES debugger/gleigem_printers.py
        DESTINATION "${CMAKE_INSTALL_DATADIR}/gdb/auto-load${debugged_dir}"
        RENAME "$<TARGET_FILE_NAME:gleigem>-gdb.py"
        COMPONENT Development)
endif()
