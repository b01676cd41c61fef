# Which versions of a compiler are here. Distributions add the version to the name; the newest comes first, and the
# name without one stands for a machine that has no other.

# gleigem_find_compilers(RESULT NAME): the commands for NAME, g++ or clang++, from the oldest version that the project
# supports on.
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
