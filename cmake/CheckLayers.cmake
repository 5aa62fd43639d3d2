# Holds who may include whom. Run with cmake -P in the root of the project.
#
# A row of the table is a folder and a regular expression for what its files may include, besides
# one another.

set(standard "<[a-z_0-9]+>")
set(external "<kiv/(Error|KDXExport|KDXPath|Messages|StringUtilities)\\.h>|\"external/.*\"")
set(joining "\"parser/(LineTrimming|LogicalLine|PhysicalLines|UndecidedLine)\\.h\"")
set(anyLibrary "<.+>")
set(support "\"support/.*\"")

# The public headers named, separated by "|".
function(set_headers variable names)
    set(${variable} "<kiv/(${names})\\.h>" PARENT_SCOPE)
endfunction()

file(GLOB publicHeaders RELATIVE ${CMAKE_SOURCE_DIR}/include/kiv include/kiv/*.h)
string(REGEX REPLACE "\\.h(;|$)" "|" publicHeaders "${publicHeaders}")
set_headers(public "${publicHeaders}KDXExport")
set_headers(parserFace "MiniKDXParser")
set_headers(readersFace "MiniKDXParser|StringMapMap|KDXToStringMapMap|ObjectKDXParser")
set_headers(writersFace "ActionBuilder|CleanKDXParamString|KDXBuilder")
set_headers(toolsFace
    "MiniKDXParser|StringMapMap|StringMapMapToKDX|KDXFormatting|ExtractActionOrStateFromKDX")

function(check_folder folder allowed)
    cmake_path(GET folder FILENAME name)
    set(own "\"(${name}/)?[A-Za-z0-9]+\\.(h|cpp)\"")
    file(GLOB_RECURSE files RELATIVE ${CMAKE_SOURCE_DIR} ${folder}/*.h ${folder}/*.cpp)
    foreach(file IN LISTS files)
        file(STRINGS ${file} includes REGEX "^[ \t]*#[ \t]*include")
        foreach(line IN LISTS includes)
            string(REGEX REPLACE "^[ \t]*#[ \t]*include[ \t]*" "" include "${line}")
            if(NOT include MATCHES "^(${own}|${allowed})([ \t]|$)")
                message(SEND_ERROR "${file} may not include ${include}")
            endif()
        endforeach()
    endforeach()
endfunction()

check_folder(include/kiv     "${standard}|${public}")
check_folder(src/external    "${standard}|${external}")
check_folder(src/parser      "${standard}|${external}|${parserFace}")
check_folder(src/readers     "${standard}|${external}|${readersFace}")
check_folder(src/writers     "${standard}|${external}|${writersFace}")
check_folder(src/tools       "${standard}|${external}|${toolsFace}|${joining}")
check_folder(cli             "${anyLibrary}")
check_folder(examples        "${anyLibrary}")
check_folder(bench           "${anyLibrary}")
check_folder(fuzz            "${anyLibrary}|${support}")
check_folder(tests/external  "${anyLibrary}|${support}")
check_folder(tests/parser    "${anyLibrary}|${support}|${external}")
check_folder(tests/readers   "${anyLibrary}|${support}|${external}")
check_folder(tests/writers   "${anyLibrary}|${support}|${external}")
check_folder(tests/tools     "${anyLibrary}|${support}|${external}")
check_folder(tests/cli       "${anyLibrary}|${support}")
check_folder(tests/laws      "${anyLibrary}|${support}")
check_folder(tests/consumer  "${anyLibrary}")
check_folder(tests/support   "${anyLibrary}")
