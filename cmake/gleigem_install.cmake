# Installs the library with its public headers, and what find_package(gleigem) and pkg-config need to find it.
# The reference platform goes along when it was built; a host with a platform of its own installs that itself.

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
    DESTINATION "${include_dir}/import")

set(installed_targets gleigem)
set(pkgconfig_libraries "-lgleigem")
if(NOT GLEIGEM_PLATFORM_TARGET)
    list(APPEND installed_targets gleigem_platform)
    string(APPEND pkgconfig_libraries " -lgleigem_platform")
    install(
        DIRECTORY platform/
        DESTINATION "${include_dir}"
        FILES_MATCHING
        PATTERN "*.hpp"
        PATTERN "pieces.hpp" EXCLUDE)
endif()

# The library finds a platform that lies beside it, wherever the two are put.
set_property(TARGET gleigem APPEND PROPERTY INSTALL_RPATH "$ORIGIN")
install(TARGETS ${installed_targets} EXPORT gleigemTargets)
install(
    EXPORT gleigemTargets
    NAMESPACE gleigem::
    DESTINATION "${package_dir}")

configure_package_config_file(
    cmake/gleigemConfig.cmake.in "${PROJECT_BINARY_DIR}/gleigemConfig.cmake"
    INSTALL_DESTINATION "${package_dir}"
    NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/gleigemConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/gleigemConfig.cmake"
              "${PROJECT_BINARY_DIR}/gleigemConfigVersion.cmake"
        DESTINATION "${package_dir}")

# Relative to where the file lies, so that the installed tree can be moved.
file(RELATIVE_PATH pkgconfig_prefix "/${pkgconfig_dir}" "/")
string(REGEX REPLACE "/$" "" pkgconfig_prefix "${pkgconfig_prefix}")
configure_file(cmake/gleigem.pc.in "${PROJECT_BINARY_DIR}/gleigem.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/gleigem.pc" DESTINATION "${pkgconfig_dir}")
