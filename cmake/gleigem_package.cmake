# The Debian packages, one for each component of the installation: `cpack --preset release`, or `cpack -G DEB` in
# any build tree that has been built. Needs dpkg-dev and file.

# A host's own platform is packaged by the host, a part of another project together with that, and a static library
# with whoever links it.
if(GLEIGEM_PLATFORM_TARGET OR NOT PROJECT_IS_TOP_LEVEL OR NOT gleigem_library_type STREQUAL SHARED)
    return()
endif()

get_target_property(interface_version gleigem SOVERSION)
set(components Runtime Development)
set(packages "libgleigem${interface_version}" libgleigem-dev)
list(GET packages 0 runtime_package)
list(GET packages 1 development_package)

# Only packages have these, each its own copy, as Debian asks for.
foreach(component package IN ZIP_LISTS components packages)
    install(
        FILES LICENSE
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}"
        RENAME copyright
        COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/package/before_packing.cmake")
# The project has no mailbox; who publishes packages says -DCPACK_PACKAGE_CONTACT="Name <address>".
if(NOT CPACK_PACKAGE_CONTACT)
    set(CPACK_PACKAGE_CONTACT "The gleigem developers <gleigem@localhost>")
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE gleigem)
# Each package has a summary of its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(description
    "Turns the arguments of a language's import command into typed entries or
precise diagnostics, and keeps the entries in one list per scope, which
refuses conflicts, enumerates what is visible and looks names up.
.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${runtime_package}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
# Where the platform is found while the dependencies of the library are worked out.
get_target_property(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS gleigem_platform BINARY_DIR)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# The trigger has ldconfig called. CPack would add two scripts that call it as well, and Debian keeps the second
# one after a removal; it adds none that are named here, and packs none that do not exist.
set(control_files triggers postinst postrm)
list(TRANSFORM control_files PREPEND "${CMAKE_CURRENT_LIST_DIR}/package/"
     OUTPUT_VARIABLE CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "meaning of a language's import command, shared libraries
${description}
This package has the library and its reference platform.")

# Without ICU's headers: only sources of the platform include them.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME "${development_package}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${runtime_package} (= ${PROJECT_VERSION}), librange-v3-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "gdb")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "meaning of a language's import command, development files
${description}
This package has the headers, what CMake and pkg-config look for, and
printers for gdb.")

include(CPack)
