# The Debian package, built by CPack (scripts/package.sh runs it): what goes into
# the package beyond the install rules, and its control fields.
include(GNUInstallDirs)

set(docdir ${CMAKE_INSTALL_DATADIR}/doc/tavrino)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright DESTINATION ${docdir})
install(FILES ${PROJECT_SOURCE_DIR}/packaging/lintian-overrides
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME tavrino)

# Debian wants the changelog compressed without a name or time stamp in it, so
# that the same sources give the same package.
find_program(GZIP_PROGRAM gzip REQUIRED)
set(changelog ${PROJECT_BINARY_DIR}/packaging/changelog.gz)
add_custom_command(OUTPUT ${changelog}
                   COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/packaging
                   COMMAND ${GZIP_PROGRAM} -9n -c ${PROJECT_SOURCE_DIR}/packaging/changelog
                           > ${changelog}
                   DEPENDS ${PROJECT_SOURCE_DIR}/packaging/changelog
                   COMMENT "Compressing the package's changelog")
add_custom_target(tavrino_changelog ALL DEPENDS ${changelog})
install(FILES ${changelog} DESTINATION ${docdir})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavrino)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Tavrino maintainers <maintainers@users.noreply.c-seed-cd286651.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "timed tests for schoolchildren")
set(CPACK_PACKAGE_DESCRIPTION
    "With Tavrino, schoolchildren take short timed tests, in a classroom or at
home. A child picks a subject and a level from kindergarten to grade 12 and
answers as many questions as possible before the clock runs out; the score is
the right answers minus the wrong ones, and every child keeps a last and a high
score for each subject and level.

Arithmetic questions are generated for each level; Spelling, Geography,
History, Music, Science and any subject a teacher adds are multiple choice.
Questions can be read aloud for children who cannot read them yet. After a
test the child reviews every question and practises the missed ones without a
clock. A teacher keeps the roster, edits the tests, prints a class report and
worksheets and exports the results for spreadsheets, also from the command
line.

Each user's data is kept in ~/.local/share/Tavrino/data.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION education)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${TAVRINO_WEBSITE})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# dpkg-shlibdeps finds the libraries the programs link; what they load by other
# means is named here: the fonts whose metrics match the Arial the screens are
# laid out in, and the offline voice tavrino-voice speaks with. The X11 platform
# plugin comes with libqt6gui6 and the sound plugins with libqt6multimedia6,
# which the programs link. Dialogs and help pages use the desktop's sans-serif font, DejaVu Sans
# on Debian: without it fontconfig falls back to Liberation Mono.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation, qt6-speech-flite-plugin")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core")

include(CPack)
