# Installs the library with its public headers, and what find_package(gleigem) and pkg-config need to find it.
# The reference platform goes along when it was built; a host with a platform of its own installs that itself.
# Component Runtime is what a program needs in order to run; Development, what it takes to build and debug one.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/gleigem")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
set(include_dir "${CMAKE_INSTALL_INCLUDEDIR}/gleigem")

install(
    FILES import/argument_parser.hpp
          import/arguments.hpp
          import/entries.hpp
          import/export.hpp
          import/import.hpp
          import/import_list.hpp
          import/messages.hpp
          import/platform.hpp
          import/rendering.hpp
    DESTINATION "${include_dir}/import"
    COMPONENT Development)

set(installed_targets gleigem)
set(pkgconfig_libraries "-lgleigem")
if(NOT GLEIGEM_PLATFORM_TARGET)
    list(APPEND installed_targets gleigem_platform)
    string(APPEND pkgconfig_libraries " -lgleigem_platform")
    install(
        DIRECTORY platform/
        DESTINATION "${include_dir}"
        COMPONENT Development
        FILES_MATCHING
        PATTERN "*.hpp"
        PATTERN "pieces.hpp" EXCLUDE)
endif()

# The library finds a platform that lies beside it, wherever the two are put.
set_property(TARGET gleigem APPEND PROPERTY INSTALL_RPATH "$ORIGIN")
install(
    TARGETS ${installed_targets}
    EXPORT gleigemTargets
    LIBRARY COMPONENT Runtime
            NAMELINK_COMPONENT Development)
install(
    EXPORT gleigemTargets
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

# Relative to where the file lies, so that the installed tree can be moved.
file(RELATIVE_PATH pkgconfig_prefix "/${pkgconfig_dir}" "/")
string(REGEX REPLACE "/$" "" pkgconfig_prefix "${pkgconfig_prefix}")
configure_file(cmake/gleigem.pc.in "${PROJECT_BINARY_DIR}/gleigem.pc" @ONLY)
install(
    FILES "${PROJECT_BINARY_DIR}/gleigem.pc"
    DESTINATION "${pkgconfig_dir}"
    COMPONENT Development)

# gdb finds the printers by the path of the library that is being debugged, so the one that it is installed to.
install(
    FILES debugger/gleigem_printers.py
    DESTINATION "${CMAKE_INSTALL_DATADIR}/gdb/auto-load\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}"
    RENAME "$<TARGET_FILE_NAME:gleigem>-gdb.py"
    COMPONENT Development)
