# Installs the program, its manual page and its completion as component Tools.

option(GLEIGEM_INSTALL_TOOLS "Install import_explorer" ON)
if(NOT GLEIGEM_INSTALL OR NOT GLEIGEM_INSTALL_TOOLS)
    return()
endif()

# Finds the libraries wherever the installed tree is moved.
if(NOT WIN32 AND NOT IS_ABSOLUTE "${CMAKE_INSTALL_BINDIR}" AND NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    file(RELATIVE_PATH libraries "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
    if(APPLE)
        set_property(TARGET import_explorer APPEND PROPERTY INSTALL_RPATH "@loader_path/${libraries}")
    else()
        set_property(TARGET import_explorer APPEND PROPERTY INSTALL_RPATH "$ORIGIN/${libraries}")
    endif()
endif()
install(TARGETS import_explorer RUNTIME COMPONENT Tools)

install(
    FILES import_explorer.bash
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions"
    RENAME import_explorer
    COMPONENT Tools)

# The manual page is generated from the program's help.
find_program(GLEIGEM_HELP2MAN help2man DOC "Makes the manual page of import_explorer")
if(NOT GLEIGEM_HELP2MAN OR CMAKE_CROSSCOMPILING)
    message(STATUS "No manual page of import_explorer: this needs help2man and a program that runs on this machine.")
    return()
endif()

set(manual_page "${CMAKE_CURRENT_BINARY_DIR}/import_explorer.1")
add_custom_command(
    OUTPUT "${manual_page}"
    COMMAND "${GLEIGEM_HELP2MAN}" --no-info --section 1 "--manual=gleigem" "--source=gleigem ${PROJECT_VERSION}"
            "--name=show what the import commands of scripts mean" "--output=${manual_page}"
            "./$<TARGET_FILE_NAME:import_explorer>"
    # help2man cannot run programs in folders with letters beyond ASCII.
    WORKING_DIRECTORY "$<TARGET_FILE_DIR:import_explorer>"
    DEPENDS import_explorer
    COMMENT "Making the manual page of import_explorer"
    VERBATIM)
add_custom_target(import_explorer_manual ALL DEPENDS "${manual_page}")
install(
    FILES "${manual_page}"
    DESTINATION "${CMAKE_INSTALL_MANDIR}/man1"
    COMPONENT Tools)
