# What `cmake --install` puts where, and the Debian package. The simulated instrument installs itself
# in simulator/.
if(VANTREL_SCREENS)
  install(TARGETS vantrel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
file(GLOB help_texts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/help/*.txt)
if(WIN32)
  # The program looks for its help texts beside itself there.
  install(FILES ${help_texts} DESTINATION ${CMAKE_INSTALL_BINDIR})
else()
  install(FILES ${help_texts} DESTINATION ${CMAKE_INSTALL_DATADIR}/vantrel)
  install(FILES ${packaging}/man/vantrel.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${packaging}/vantrel.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${packaging}/vantrel.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  install(FILES ${packaging}/vantrel.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  install(FILES ${packaging}/vantrel.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo RENAME org.vantrel.vantrel.metainfo.xml)
  install(FILES ${packaging}/deb/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vantrel)
  install(FILES ${packaging}/deb/changelog
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vantrel RENAME changelog.Debian)
  install(FILES ${packaging}/deb/lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME vantrel)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vantrel)
set(CPACK_PACKAGE_VENDOR "Vantrel")
set(CPACK_PACKAGE_CONTACT "Vantrel maintainers <maintainers@vantrel.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "data acquisition for a multi-channel ion-measuring instrument")
set(CPACK_PACKAGE_DESCRIPTION
"Vantrel is the desktop companion of an ion-measuring instrument on a serial
port. It guides an analyst through the setup of the electrodes, their
calibration with two to six standards, and the measurement of potentials, pH
and concentrations, which are shown live and recorded into text files.
Recorded files are viewed as lists and graphs, searched and printed.
.
A simulated instrument comes along for learning and trying.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${packaging}/deb/compress.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Without a fixed-pitch font the printed columns would not line up.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core, libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cups")
include(CPack)
