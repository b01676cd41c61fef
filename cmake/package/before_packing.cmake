# Run by CPack between installation and packing.

file(GLOB_RECURSE paths LIST_DIRECTORIES true "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*")
foreach(path IN LISTS paths)
    if(IS_DIRECTORY "${path}")
        # Created under the umask of the user.
        file(CHMOD "${path}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                         WORLD_EXECUTE)
    elseif(path MATCHES "\\.so\\.[0-9.]+$|/bin/[^/]+$" AND NOT IS_SYMLINK "${path}")
        # Installed programs have a search path for the libraries. The loader searches the folders of packages anyway,
        # and Debian does not allow search paths in packages.
        file(RPATH_REMOVE FILE "${path}")
    elseif(path MATCHES "\\.a$")
        # CPack does not strip these, which contain the paths of the build tree in their debug information.
        execute_process(COMMAND "${CPACK_GLEIGEM_STRIP}" --strip-debug "${path}" COMMAND_ERROR_IS_FATAL ANY)
    elseif(path MATCHES "/man/man[1-9]/[^/]+\\.[1-9]$")
        execute_process(COMMAND gzip -9 --no-name "${path}" COMMAND_ERROR_IS_FATAL ANY)
    endif()
endforeach()

# Each package has the changelog in Debian's format.
execute_process(
    COMMAND "${CPACK_GLEIGEM_PYTHON}" "${CMAKE_CURRENT_LIST_DIR}/debian_changelog.py" "${CPACK_GLEIGEM_CHANGELOG}"
            "${CPACK_PACKAGE_VERSION}" "${CPACK_PACKAGE_CONTACT}"
    OUTPUT_VARIABLE changelog COMMAND_ERROR_IS_FATAL ANY)
foreach(path IN LISTS paths)
    if(path MATCHES "/share/doc/[^/]+/copyright$")
        cmake_path(REPLACE_FILENAME path changelog)
        file(WRITE "${path}" "${changelog}")
        execute_process(COMMAND gzip -9 --no-name --force "${path}" COMMAND_ERROR_IS_FATAL ANY)
    endif()
endforeach()
