# Run by CPack between installation and packaging. An installed library finds the platform beside it by itself;
# in the folder of a package the loader looks anyway, and Debian wants no search path of a library's own.

file(GLOB_RECURSE libraries LIST_DIRECTORIES false "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.so.*")
foreach(library IN LISTS libraries)
    if(NOT IS_SYMLINK "${library}")
        file(RPATH_REMOVE FILE "${library}")
    endif()
endforeach()
