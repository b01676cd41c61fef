# Run by CPack after packing. The trigger calls ldconfig; CPack also adds two scripts that call it to packages of
# libraries, and Debian keeps the second one after a removal. They are removed here.

foreach(package IN LISTS CPACK_PACKAGE_FILES)
    execute_process(
        COMMAND dpkg-deb --info "${package}" postinst
        RESULT_VARIABLE has_no_scripts OUTPUT_QUIET ERROR_QUIET)
    if(has_no_scripts)
        continue()
    endif()
    set(unpacked "${package}.unpacked")
    execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${unpacked}" COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE "${unpacked}/DEBIAN/postinst" "${unpacked}/DEBIAN/postrm")
    execute_process(
        COMMAND dpkg-deb --root-owner-group -Zxz --build "${unpacked}" "${package}"
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE_RECURSE "${unpacked}")
endforeach()
