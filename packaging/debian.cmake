# The Debian package, by `cpack` in a build that is installed below /usr; `packaging/make-deb` does all of it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ${name})
set(CPACK_PACKAGE_VENDOR "K-Varo")
set(CPACK_PACKAGE_CONTACT "K-Varo <assistenza@k-varo.example>")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "song library for the Tarvel4, a hardware song player")
set(CPACK_PACKAGE_DESCRIPTION "Prepares a musician's backing tracks: reads MIDI, karaoke, MP3, MF3, MF4 and
MF5 songs into a table, completes their data from a catalogue, lets the user
correct them, backs them up, copies them to the player's card or stick, and
writes the index files through which the player browses its memory.
.
The window is tarvel4soft; tarvel4soft-cli does the same from a terminal and
in scripts.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://www.k-varo.example/")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What is loaded by name: the driver of the catalogue and the journal.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt${TARVEL4_QT}sql${TARVEL4_QT}-sqlite")
# What songs are listened to with, which is loaded by name too: the program does without it.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libfluidsynth3, timgm6mb-soundfont | sf3-soundfont-gm | sf2-soundfont-gm, gstreamer1.0-plugins-good")
if(TARVEL4_QT EQUAL 5)
  string(APPEND CPACK_DEBIAN_PACKAGE_RECOMMENDS ", libqt5multimedia5-plugins")
  set(CPACK_DEBIAN_PACKAGE_SUGGESTS qtwayland5)
else()
  set(CPACK_DEBIAN_PACKAGE_SUGGESTS qt6-wayland)
endif()
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

if(CMAKE_INSTALL_PREFIX STREQUAL "/usr" AND GZIP)
  string(TIMESTAMP TARVEL4_CHANGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
  configure_file(changelog.Debian.in changelog.Debian @ONLY)
  execute_process(COMMAND "${GZIP}" -9nkf changelog.Debian WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}")
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian.gz" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}" RENAME changelog.gz)
  install(FILES lintian-overrides DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" RENAME ${name})
endif()

include(CPack)
