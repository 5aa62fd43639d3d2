# Runs the command behind "--" on the file INPUT and compares what it prints with the file EXPECTED.
set(command)
set(isCommand NO)
math(EXPR lastArgument "${CMAKE_ARGC} - 1")
foreach(index RANGE 1 ${lastArgument})
    set(argument "${CMAKE_ARGV${index}}")
    if(isCommand)
        list(APPEND command "${argument}")
    elseif(argument STREQUAL "--")
        set(isCommand YES)
    endif()
endforeach()

execute_process(COMMAND ${command} INPUT_FILE ${INPUT} OUTPUT_VARIABLE printed
    COMMAND_ERROR_IS_FATAL ANY)
file(READ ${EXPECTED} expected)
if(NOT printed STREQUAL expected)
    message(FATAL_ERROR "Expected what is in ${EXPECTED}, but got\n${printed}")
endif()
