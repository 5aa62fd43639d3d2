# Holds that LIBRARY, a shared library or the import library of a DLL, exports the names that LIST
# holds and no others, as the tools NM and CXXFILT show them.
#
# With UPDATE set, it writes the list instead:
#
#   cmake -D UPDATE=ON -D NM=nm -D NM_OPTIONS=--dynamic -D CXXFILT=c++filt -D LIST=cmake/exports.txt
#       -D LIBRARY=build/dev/libKIVKDXParseUtilities.so -P cmake/CheckExports.cmake

cmake_policy(VERSION 3.25)

execute_process(COMMAND ${NM} ${NM_OPTIONS} --defined-only ${LIBRARY}
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL " [A-Za-z] [^\n]+" symbols "${symbols}")
if(LIBRARY MATCHES "\\.dll\\.a$")
    list(FILTER symbols INCLUDE REGEX " __imp_")
endif()
list(TRANSFORM symbols REPLACE "^ [A-Za-z] (__imp_)?" "")
list(JOIN symbols "\n" symbols)
set(mangled ${CMAKE_CURRENT_BINARY_DIR}/exports.mangled)
file(WRITE ${mangled} "${symbols}\n")
execute_process(COMMAND ${CXXFILT} INPUT_FILE ${mangled}
    OUTPUT_VARIABLE names COMMAND_ERROR_IS_FATAL ANY)

# The same names on every machine, and readable. Type information is left out: which of it is shared
# differs from machine to machine.
string(REPLACE "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >"
    "std::string" names "${names}")
string(REPLACE "std::basic_string_view<char, std::char_traits<char> >" "std::string_view"
    names "${names}")
string(REGEX REPLACE ", std::(allocator|less)<[^<>]*(<[^<>]*(<[^<>]*>)?[^<>]*>)?[^<>]*>" ""
    names "${names}")
string(REPLACE " >" ">" names "${names}")
string(REPLACE "std::map<std::string, std::map<std::string, std::string>, \
std::allocator<std::pair<std::string const, std::map<std::string, std::string>>>>"
    "kiv::StringMapMap" names "${names}")
string(REPLACE "[abi:cxx11]" "" names "${names}")
string(REGEX REPLACE "unsigned (long long|int)" "unsigned long" names "${names}")
string(REGEX MATCHALL "[^\n]+" names "${names}")
list(FILTER names EXCLUDE REGEX "^typeinfo ")
list(REMOVE_DUPLICATES names)
list(SORT names)

if(UPDATE)
    list(JOIN names "\n" text)
    file(WRITE ${LIST} "${text}\n")
    return()
endif()
file(STRINGS ${LIST} expected)
foreach(name IN LISTS names)
    if(NOT name IN_LIST expected)
        message(SEND_ERROR "${LIBRARY} may not export ${name}")
    endif()
endforeach()
foreach(name IN LISTS expected)
    if(NOT name IN_LIST names)
        message(SEND_ERROR "${LIBRARY} does not export ${name}")
    endif()
endforeach()
