# Turns on the warnings of the house for the targets named.
function(kiv_enable_warnings)
    foreach(target IN LISTS ARGN)
        target_compile_options(${target} PRIVATE
            -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
        set_target_properties(${target} PROPERTIES
            COMPILE_WARNING_AS_ERROR ${KIV_WARNINGS_AS_ERRORS})
    endforeach()
endfunction()
