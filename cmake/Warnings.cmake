# Turns on the warnings of the house for the targets named.
function(kiv_enable_warnings)
    set(warnings -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(MSVC)
        set(warnings /W4 /permissive-)
    endif()
    foreach(target IN LISTS ARGN)
        target_compile_options(${target} PRIVATE ${warnings})
        set_target_properties(${target} PROPERTIES
            COMPILE_WARNING_AS_ERROR ${KIV_WARNINGS_AS_ERRORS})
    endforeach()
endfunction()
