# Holds who may include whom. Run with -P in the root of the project.
#
# A row is a folder and a regular expression for what its files may include, besides the files of
# the folder itself. The first row that fits a file is the one that holds for it.

set(external "<kiv/(Error|KDXExport|KDXPath|Messages|StringUtilities)\\.h>|\"external/.*\"")
set(standard "<[a-z_0-9]+>")

function(check_folder folder allowed)
    file(GLOB_RECURSE files RELATIVE ${CMAKE_SOURCE_DIR} ${folder}/*.h ${folder}/*.cpp)
    set(own "")
    if(folder MATCHES "^(src|tests)/")
        string(REGEX REPLACE "^src/" "" own ${folder})
        set(own "|\"${own}/.*\"")
    endif()
    foreach(file IN LISTS files)
        file(STRINGS ${file} includes REGEX "^ *# *include")
        foreach(line IN LISTS includes)
            string(REGEX REPLACE "^ *# *include *" "" include "${line}")
            if(NOT include MATCHES "^(${allowed}${own})( |$)")
                message(SEND_ERROR "${file} may not include ${include}")
            endif()
        endforeach()
    endforeach()
    list(LENGTH files count)
    message(STATUS "${folder}: ${count} files")
endfunction()
