# zelvora_windows_program(target description svg [CONSOLE]): makes a program of Windows' own kind: with an icon, a version and
# a manifest, and without a console unless it is a tool for one. Elsewhere, and for the plain parts alone, nothing is done.
if(WIN32 AND ZELVORA_QT)
    enable_language(RC)
    find_program(ZELVORA_RSVG rsvg-convert REQUIRED)
    find_program(ZELVORA_CONVERT convert REQUIRED)
endif()

# The icon of a picture, in the sizes that the system shows.
function(zelvora_windows_icon svg ico)
    set(pictures)
    set(commands)
    foreach(edge 16 20 24 32 48 64 256)
        list(APPEND commands COMMAND ${ZELVORA_RSVG} --width ${edge} --height ${edge} --output ${ico}-${edge}.png ${svg})
        list(APPEND pictures ${ico}-${edge}.png)
    endforeach()
    add_custom_command(OUTPUT ${ico} ${commands} COMMAND ${ZELVORA_CONVERT} ${pictures} ${ico}
        DEPENDS ${svg} COMMENT "" VERBATIM)
endfunction()

function(zelvora_windows_program target description svg)
    if(NOT WIN32 OR NOT ZELVORA_QT)
        return()
    endif()
    if(NOT "CONSOLE" IN_LIST ARGN)
        set_target_properties(${target} PROPERTIES WIN32_EXECUTABLE ON)
    endif()
    string(REPLACE "." "," ZELVORA_VERSION_NUMBERS "${PROJECT_VERSION}.0")
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}-resources)
    set(source ${PROJECT_SOURCE_DIR}/packaging/windows)
    configure_file(${source}/program.manifest ${folder}/program.manifest @ONLY)
    configure_file(${source}/program.rc ${folder}/program.rc @ONLY)
    zelvora_windows_icon(${svg} ${folder}/program.ico)
    target_sources(${target} PRIVATE ${folder}/program.rc)
    set_source_files_properties(${folder}/program.rc PROPERTIES
        OBJECT_DEPENDS "${folder}/program.ico;${folder}/program.manifest")
endfunction()
