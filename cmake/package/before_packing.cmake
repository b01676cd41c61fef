# Run by CPack between installation and packing.

file(GLOB_RECURSE paths LIST_DIRECTORIES true "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*")
foreach(path IN LISTS paths)
    if(IS_DIRECTORY "${path}")
        # Made under the umask of whoever packs.
        file(CHMOD "${path}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                         WORLD_EXECUTE)
    elseif(path MATCHES "\\.so\\.[0-9.]+$" AND NOT IS_SYMLINK "${path}")
        # An installed library finds the platform beside it by a search path of its own. In the folder of a
        # package the loader looks anyway, and Debian wants no such path there.
        file(RPATH_REMOVE FILE "${path}")
    endif()
endforeach()
