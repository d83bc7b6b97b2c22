# Pixels for desktops that take no drawings. Up to 32 the drawing is one of few lines that fall on whole pixels.
find_program(RSVG_CONVERT rsvg-convert)
if(NOT RSVG_CONVERT)
    message(STATUS "Icons are installed as drawings only: rsvg-convert (librsvg2-bin) is not there")
    return()
endif()
foreach(size 16 22 24 32 48 64 128 256 512)
    set(drawing icons/${app}.svg)
    if(size LESS_EQUAL 32)
        set(drawing icons/${app}-small.svg)
    endif()
    set(picture ${CMAKE_CURRENT_BINARY_DIR}/icons/${size}.png)
    add_custom_command(OUTPUT ${picture}
        COMMAND ${CMAKE_COMMAND} -E make_directory icons
        COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} ${CMAKE_CURRENT_SOURCE_DIR}/${drawing} -o ${picture}
        DEPENDS ${drawing} VERBATIM)
    list(APPEND pictures ${picture})
    install(FILES ${picture} DESTINATION ${icons}/${size}x${size}/apps RENAME ${app}.png)
endforeach()
add_custom_target(icons ALL DEPENDS ${pictures})
