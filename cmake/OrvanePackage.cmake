# SPDX-License-Identifier: GPL-3.0-or-later
# The Debian package: what is installed beside the programs, and what CPack says of it. "./dev
# package" first makes what is generated into ${ORVANE_PACKAGE_FILES}: the guide's page, changelogs.
include(GNUInstallDirs)

set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(ORVANE_PACKAGE_FILES ${CMAKE_BINARY_DIR}/package)
set(docs ${CMAKE_INSTALL_DATADIR}/doc/orvane)

install(FILES ${packaging}/copyright DESTINATION ${docs})
install(FILES ${ORVANE_PACKAGE_FILES}/changelog.gz DESTINATION ${docs} OPTIONAL)
foreach(program IN ITEMS orvane orvane-cli)
  install(FILES ${ORVANE_PACKAGE_FILES}/${program}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
          OPTIONAL)
endforeach()
if(ORVANE_GUI)
  install(FILES ${packaging}/orvane.desktop ${packaging}/zz-orvane-folder.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${packaging}/orvane.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  install(FILES ${packaging}/orvane.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES ${PROJECT_SOURCE_DIR}/src/app/icons/orvane.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  install(FILES ${ORVANE_PACKAGE_FILES}/guide.html DESTINATION ${CMAKE_INSTALL_DATADIR}/orvane
          OPTIONAL)
  # A program in the build folder finds the guide where an installed one does: beside itself.
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/share/orvane)
  file(RELATIVE_PATH guide ${CMAKE_BINARY_DIR}/share/orvane ${PROJECT_SOURCE_DIR}/docs/guide)
  file(CREATE_LINK ${guide} ${CMAKE_BINARY_DIR}/share/orvane/guide SYMBOLIC)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvane)
set(CPACK_PACKAGE_CONTACT "Orvane developers <orvane@users.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "parameter tables and field files of geophysical receivers")
set(CPACK_PACKAGE_DIRECTORY ${ORVANE_PACKAGE_FILES})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME orvane.deb)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Orvane prepares and looks through SIP, TDIP, TDEM, CSAMT, MT/AMT and FDEM
surveys: it edits the binary parameter tables that drive field receivers,
writes start-up files for a whole spread, shows waveforms and calibrations,
restacks and converts recordings. orvane-cli does the same in scripts.")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded while running: Qt's SVG icon engine, and what writes NetCDF.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, libnetcdf19")
# What opens the guide and the texts; on Wayland without XWayland Qt needs its own plugin.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, qt6-wayland")
# dpkg runs the triggers of the MIME, icon and desktop databases; the package has no scripts.
# Only what "./dev package" built is installed; nothing else needs building.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
include(CPack)
