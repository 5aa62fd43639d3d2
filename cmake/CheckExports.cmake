# Holds that LIBRARY exports names of namespace kiv and nothing else, as the tool NM lists them.
# LLVM's leaves the names of conversion operators mangled: _ZNK3kiv...
execute_process(COMMAND ${NM} --dynamic --defined-only --demangle ${LIBRARY}
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" symbols "${symbols}")
if(NOT symbols)
    message(FATAL_ERROR "${LIBRARY} exports nothing")
endif()
foreach(symbol IN LISTS symbols)
    string(REGEX REPLACE "^[0-9a-f]+ [A-Za-z] " "" name "${symbol}")
    if(NOT name MATCHES "^((typeinfo for |typeinfo name for |vtable for )?kiv::|_ZNK?3kiv)"
            OR name MATCHES "kiv::detail::|3kiv6detail")
        message(SEND_ERROR "${LIBRARY} may not export ${name}")
    endif()
endforeach()
