# The completions and the man pages, which kdx itself makes out of its commands and options.
set(documents ${CMAKE_CURRENT_BINARY_DIR}/documents)
file(MAKE_DIRECTORY ${documents})

# Adds the file that kdx prints when it is given the arguments behind the file's name.
function(kdx_add_document file)
    add_custom_command(OUTPUT ${documents}/${file}
        COMMAND kdx ${ARGN} > ${documents}/${file} DEPENDS kdx VERBATIM)
    set_property(TARGET kdx APPEND PROPERTY KDX_DOCUMENTS ${documents}/${file})
endfunction()

kdx_add_document(kdx.bash completion bash)
kdx_add_document(kdx.zsh completion zsh)
kdx_add_document(kdx.fish completion fish)
install(FILES ${documents}/kdx.bash RENAME kdx
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${documents}/kdx.zsh RENAME _kdx
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
install(FILES ${documents}/kdx.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

kdx_add_document(kdx.1 manual)
install(FILES ${documents}/kdx.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
string(TOLOWER "${commands}" commandNames)
foreach(command IN LISTS commandNames)
    kdx_add_document(kdx-${command}.1 manual ${command})
    install(FILES ${documents}/kdx-${command}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()

get_target_property(allDocuments kdx KDX_DOCUMENTS)
add_custom_target(kdxDocuments ALL DEPENDS ${allDocuments})
