# What a render node gets: tintwell-host with the effect's module beside it, where it looks for it. `cpack`
# makes a Debian package of that.
set(CMAKE_INSTALL_DOCDIR share/doc/tintwell-host)
include(GNUInstallDirs)

set(home ${CMAKE_INSTALL_LIBDIR}/tintwell)
install(TARGETS tintwell-host RUNTIME DESTINATION ${home})
install(TARGETS Tintwell LIBRARY DESTINATION ${home})
file(RELATIVE_PATH program /${CMAKE_INSTALL_BINDIR} /${home}/tintwell-host)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/link)
file(CREATE_LINK ${program} ${PROJECT_BINARY_DIR}/link/tintwell-host SYMBOLIC)
install(FILES ${PROJECT_BINARY_DIR}/link/tintwell-host DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES LICENSE NOTICES.md docs/command-line.md docs/farm.md
    DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY examples/farm DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tintwell-host)
set(CPACK_PACKAGE_CONTACT "the Tintwell developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Grades pictures and clips with the Tintwell LUT effect")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
