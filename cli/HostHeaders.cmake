# CLI11 and nlohmann_json are headers alone: a program for another machine takes them from this one.
# Through links, because this machine's other headers, which lie beside them, are not for it.
set(hostHeaders ${CMAKE_CURRENT_BINARY_DIR}/host-headers)
file(MAKE_DIRECTORY ${hostHeaders})

function(kiv_take_host_headers target folder header)
    find_path(KIV_${folder}_HEADERS ${folder}/${header} REQUIRED NO_CMAKE_FIND_ROOT_PATH
        PATHS /usr/local/include /usr/include)
    file(CREATE_LINK ${KIV_${folder}_HEADERS}/${folder} ${hostHeaders}/${folder} SYMBOLIC)
    add_library(${target} INTERFACE IMPORTED)
    target_include_directories(${target} INTERFACE ${hostHeaders})
endfunction()

kiv_take_host_headers(CLI11::CLI11 CLI CLI.hpp)
kiv_take_host_headers(nlohmann_json::nlohmann_json nlohmann json.hpp)
