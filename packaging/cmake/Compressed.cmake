# Installs a file as gzip makes it: small, and the same bytes from the same file.
function(install_compressed source folder name)
    add_custom_command(OUTPUT ${name}
        COMMAND sh -c "gzip -9nc '${CMAKE_CURRENT_SOURCE_DIR}/${source}' >${name}"
        DEPENDS ${source} VERBATIM)
    add_custom_target(compressed-${name} ALL DEPENDS ${name})
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name} DESTINATION ${folder})
endfunction()
