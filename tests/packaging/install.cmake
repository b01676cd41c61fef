# Installs into STAGE and checks the dynamic section of the installed library: only the platform may need ICU, and no
# path of the build tree may be left.

file(REMOVE_RECURSE "${STAGE}")
execute_process(
    COMMAND "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --config "${CONFIG}" --prefix "${STAGE}"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

# A static library has no dynamic section.
if(LIBRARY)
    execute_process(
        COMMAND "${READELF}" --wide --dynamic "${STAGE}/${LIBRARY}"
        OUTPUT_VARIABLE dynamic_section COMMAND_ERROR_IS_FATAL ANY)
    if(NOT dynamic_section MATCHES "\\(NEEDED\\)[^\n]*libstdc|\\(NEEDED\\)[^\n]*libc\\+\\+")
        message(FATAL_ERROR "Not the dynamic section of a C++ library:\n${dynamic_section}")
    endif()
    if(dynamic_section MATCHES "\\(NEEDED\\)[^\n]*libicu")
        message(FATAL_ERROR "The library needs ICU itself:\n${dynamic_section}")
    endif()
    string(FIND "${dynamic_section}" "${BUILD_DIR}" position)
    if(NOT position EQUAL -1)
        message(FATAL_ERROR "The installed library remembers the build tree:\n${dynamic_section}")
    endif()
endif()

# The installed tool must run, and its manual page and completion must be in the standard folders.
if(TOOL)
    execute_process(COMMAND "${STAGE}/${TOOL}" --version OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    foreach(file IN ITEMS "bash-completion/completions/import_explorer" ${MANUAL})
        if(NOT EXISTS "${STAGE}/${DATADIR}/${file}")
            message(FATAL_ERROR "The tool is installed without ${file}.")
        endif()
    endforeach()
endif()
