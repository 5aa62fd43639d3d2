# kdx as an npm package: the program as a function, kdx.js and kdx.wasm, and what calls it, in a
# folder of their own that `npm pack` and the site take as it is.
set(wasmPackage ${PROJECT_BINARY_DIR}/kdx-wasm)
set(wasmSources ${CMAKE_CURRENT_LIST_DIR}/npm)

set_target_properties(kdx PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${wasmPackage})
target_link_options(kdx PRIVATE
    -sMODULARIZE
    -sEXPORT_NAME=createKdx
    -sENVIRONMENT=web,worker,node
    -sINVOKE_RUN=0
    -sNODEJS_CATCH_EXIT=0
    -sNODEJS_CATCH_REJECTION=0
    -sEXPORTED_RUNTIME_METHODS=callMain,FS
    -sINCOMING_MODULE_JS_API=instantiateWasm,quit
    -sFORCE_FILESYSTEM
    -sALLOW_MEMORY_GROWTH)

configure_file(${wasmSources}/package.json ${wasmPackage}/package.json @ONLY)
foreach(file IN ITEMS functions.js index.d.ts index.js README.md)
    configure_file(${wasmSources}/${file} ${wasmPackage}/${file} COPYONLY)
endforeach()
configure_file(${PROJECT_SOURCE_DIR}/LICENSE ${wasmPackage}/LICENSE COPYONLY)
