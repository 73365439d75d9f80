# tavrino_windows_resource(<variable>)
# Makes the program's Windows resource file (its icon and version information,
# from the project's version) in the build tree and sets <variable> to its path.
function(tavrino_windows_resource variable)
    set(TAVRINO_ICON_FILE "${PROJECT_SOURCE_DIR}/src/app/icons/tavrino.ico")
    set(file "${PROJECT_BINARY_DIR}/tavrino.rc")
    configure_file("${PROJECT_SOURCE_DIR}/src/app/tavrino.rc.in" "${file}" @ONLY)
    set(${variable} "${file}" PARENT_SCOPE)
endfunction()
