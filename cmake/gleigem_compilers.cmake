# Finds the installed versions of a compiler. Distributions append the version to the name; the name without a version
# is only used on machines that have no other.

# gleigem_find_compilers(RESULT NAME): the commands for NAME, g++ or clang++, starting with the oldest version that the
# project supports.
function(gleigem_find_compilers result name)
    set(found "")
    foreach(version RANGE 40 12 -1)
        find_program(command ${name}-${version} NO_CACHE)
        if(command)
            list(APPEND found ${name}-${version})
        endif()
        unset(command)
    endforeach()
    if(NOT found)
        find_program(command ${name} NO_CACHE)
        if(command)
            set(found ${name})
        endif()
    endif()
    set(${result} "${found}" PARENT_SCOPE)
endfunction()
