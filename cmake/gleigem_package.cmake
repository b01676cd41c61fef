# The Debian packages, one for each component of the installation: `cpack --preset release`, or `cpack -G DEB` in any
# build tree after building. A build with debug information also produces a package of debug symbols. Requires dpkg-dev,
# file and Python.

# A host packages its own platform; a parent project packages this project as part of itself; users of a static library
# package it with their programs.
if(GLEIGEM_PLATFORM_TARGET OR NOT PROJECT_IS_TOP_LEVEL OR NOT gleigem_library_type STREQUAL SHARED)
    return()
endif()
find_package(Python3 COMPONENTS Interpreter QUIET)
if(NOT Python3_FOUND)
    return()
endif()

get_target_property(interface_version gleigem SOVERSION)
set(runtime_package "libgleigem${interface_version}")
set(components Runtime Development Documentation)
set(packages "${runtime_package}" libgleigem-dev gleigem-doc)
if(TARGET import_explorer AND GLEIGEM_INSTALL_TOOLS)
    list(APPEND components Tools)
    list(APPEND packages gleigem-tools)
endif()

# Only packages contain these, one copy each, as Debian requires. The changelog is added to the same folder.
file(READ LICENSE license)
file(CONFIGURE OUTPUT copyright CONTENT "Copyright (C) The gleigem developers\n\n@license@" @ONLY)
foreach(component package IN ZIP_LISTS components packages)
    install(
        FILES "${PROJECT_BINARY_DIR}/copyright"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}"
        COMPONENT ${component} EXCLUDE_FROM_ALL)
    string(TOUPPER ${component} variable)
    set(CPACK_DEBIAN_${variable}_PACKAGE_NAME "${package}")
endforeach()

# The documents with the examples that they refer to, in the same folders as in the project, and the reference.
set(documentation "${CMAKE_INSTALL_DATADIR}/doc/gleigem-doc")
install(
    FILES README.md SECURITY.md CHANGELOG.md
    DESTINATION "${documentation}"
    COMPONENT Documentation EXCLUDE_FROM_ALL)
install(
    DIRECTORY docs examples
    DESTINATION "${documentation}"
    COMPONENT Documentation EXCLUDE_FROM_ALL
    PATTERN docs/reference EXCLUDE
    PATTERN .clang-tidy EXCLUDE)
if(TARGET gleigem_reference)
    install(
        CODE "execute_process(
                  COMMAND \"${CMAKE_COMMAND}\" --build \"${PROJECT_BINARY_DIR}\" --target gleigem_reference
                  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)"
        COMPONENT Documentation EXCLUDE_FROM_ALL)
    install(
        DIRECTORY "${PROJECT_BINARY_DIR}/html/"
        DESTINATION "${documentation}/reference"
        COMPONENT Documentation EXCLUDE_FROM_ALL)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/package/before_packing.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/package/after_packing.cmake")
# Required by the scripts.
set(CPACK_GLEIGEM_PYTHON "${Python3_EXECUTABLE}")
set(CPACK_GLEIGEM_STRIP "${CMAKE_STRIP}")
set(CPACK_GLEIGEM_CHANGELOG "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
# The project has no email address; to publish packages, set -DCPACK_PACKAGE_CONTACT="Name <address>".
if(NOT CPACK_PACKAGE_CONTACT)
    set(CPACK_PACKAGE_CONTACT "The gleigem developers <gleigem@localhost>")
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE gleigem)
# Each package has its own summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(description
    "Turns the arguments of a language's import command into typed entries or
precise diagnostics, and keeps the entries in one list per scope, which
refuses conflicts, enumerates what is visible and looks names up.
.")

# CPack strips the files from which it extracts the symbols.
if(CMAKE_BUILD_TYPE MATCHES "Deb")
    set(CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON)
    set(CPACK_DEBIAN_TOOLS_DEBUGINFO_PACKAGE ON)
else()
    set(CPACK_STRIP_FILES ON)
endif()

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
# The folders in which dpkg-shlibdeps finds these libraries.
foreach(target gleigem gleigem_platform)
    get_target_property(folder ${target} BINARY_DIR)
    list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${folder}")
endforeach()
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_LIST_DIR}/package/triggers")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "meaning of a language's import command, shared libraries
${description}
This package has the library and its reference platform.")

# Without ICU's headers, which only the sources of the platform include.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${runtime_package} (= ${PROJECT_VERSION}), librange-v3-dev")
# Two of these are for the test kit.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "gdb, gleigem-doc, libgmock-dev, libicu-dev")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "meaning of a language's import command, development files
${description}
This package has the headers, what CMake and pkg-config look for, and
printers for gdb.")

set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_DESCRIPTION
    "meaning of a language's import command, documentation
${description}
This package has the pages about it, the examples and, where Doxygen was at
hand, the API reference.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
    "meaning of a language's import command, tools
${description}
This package has import_explorer, which shows what the import commands of
scripts mean.")

include(CPack)
