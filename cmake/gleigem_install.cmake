# Installs the library with its public headers, and what find_package(gleigem) and pkg-config need to find it.
# The platform goes along, the reference platform as well as one of the host's own, unless the host has found that
# one installed already.
# Component Runtime is what a program needs in order to run; Development, what it takes to build and debug one.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/gleigem")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
set(include_dir "${CMAKE_INSTALL_INCLUDEDIR}/gleigem")

set(installed_targets gleigem gleigem_host)
set(pkgconfig_libraries "-lgleigem")
set(found_platform "")
include(gleigem_install_platform)

# The reference platform's own dependency is the user's as soon as the platform is a static library.
set(pkgconfig_requirements "")
set(static_dependencies "")
if(gleigem_library_type STREQUAL STATIC AND NOT GLEIGEM_PLATFORM_TARGET)
    set(pkgconfig_requirements "Requires.private: icu-uc")
    set(static_dependencies "find_dependency(ICU COMPONENTS uc)")
endif()

# The library finds a platform that lies beside it, wherever the two are put.
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

# The test kit has a set of its own, since programs do not need what its static libraries do.
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

# Relative to where the file lies, so that the installed tree can be moved; a folder that the packager gave as an
# absolute one stays where it is.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(pkgconfig_prefix "${CMAKE_INSTALL_PREFIX}")
else()
    file(RELATIVE_PATH pkgconfig_prefix "/${pkgconfig_dir}" "/")
    string(REGEX REPLACE "/$" "" pkgconfig_prefix "${pkgconfig_prefix}")
    string(PREPEND pkgconfig_prefix "\${pcfiledir}/")
endif()
# pkg-config itself writes a blank in pcfiledir as the shell reads it; those in absolute folders are written here.
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

# gdb finds the printers by the path of the library that is being debugged, so the one that it is installed to.
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
