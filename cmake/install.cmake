# What an install puts where, and the Debian package made from it. Every path
# is relative to the prefix, so the tree works wherever it is unpacked.

# The day the project's version was released: the two change together.
set(VERLIS_RELEASE_DATE 2026-11-23)
configure_file(data/verlis.desktop.in ${VERLIS_APP_ID}.desktop @ONLY)
configure_file(data/verlis.metainfo.xml.in ${VERLIS_APP_ID}.metainfo.xml @ONLY)
configure_file(data/verlis.1 verlis.1 @ONLY)
configure_file(data/changelog.in changelog @ONLY)

# The manual page and the change log go compressed, with no time stamp in
# the header, as Debian has them.
foreach(doc verlis.1 changelog)
  add_custom_command(OUTPUT ${doc}.gz
    COMMAND gzip -9 -n -c ${doc} > ${doc}.gz
    DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/${doc})
endforeach()
add_custom_target(verlis_docs ALL DEPENDS verlis.1.gz changelog.gz)

install(TARGETS verlis RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES data/Verlis.txt DESTINATION ${CMAKE_INSTALL_DATADIR}/verlis)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${VERLIS_APP_ID}.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${VERLIS_APP_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES data/verlis.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
        RENAME ${VERLIS_APP_ID}.svg)
# The drawing's fixed sizes, rendered once by scripts/make-icons.sh.
file(GLOB icon_sizes RELATIVE ${CMAKE_CURRENT_SOURCE_DIR}/data/icons
     ${CMAKE_CURRENT_SOURCE_DIR}/data/icons/*)
foreach(size IN LISTS icon_sizes)
  install(FILES data/icons/${size}/verlis.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}/apps RENAME ${VERLIS_APP_ID}.png)
endforeach()
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/verlis.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES data/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/verlis)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/verlis)
install(FILES data/verlis.lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
        RENAME verlis)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME verlis)
set(CPACK_PACKAGE_VENDOR "The Verlis developers")
set(CPACK_PACKAGE_CONTACT "The Verlis developers <verlis@users.noreply.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "reader for a book of interchangeable poem lines")
set(CPACK_PACKAGE_DESCRIPTION [=[
Verlis reads a book of ten poems of fourteen lines, where every line
position can take its line from any of the ten poems. Lines turn to the
next or previous page one at a time or all together, align on the first
line's page, or make a random poem. The interface is in Japanese.]=])
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_CURRENT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION text)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Libraries, the X11 platform plugin among them, come from dpkg-shlibdeps.
# What is loaded at run time no linker sees: the SVG icon engine and a
# Japanese font, any of Debian's gothic ones; and, recommended, the Wayland
# platform and the toolkit's dialogs in Japanese.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libqt6svg6, fonts-noto-cjk | fonts-vlgothic | fonts-ipafont-gothic | fonts-takao-gothic")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
