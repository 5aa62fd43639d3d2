# Where the library is installed shared and static, BUILD_SHARED_LIBS says which one is meant.
set(kinds shared static)
if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
    set(kinds static shared)
endif()
foreach(kind IN LISTS kinds)
    include(${CMAKE_CURRENT_LIST_DIR}/KIVKDXParseUtilities-${kind}.cmake
        OPTIONAL RESULT_VARIABLE found)
    if(found)
        break()
    endif()
endforeach()
