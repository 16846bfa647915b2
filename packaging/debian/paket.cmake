# The Debian package: its own files, and what CPack is told.

# The settings file is a configuration file in /etc, so that what the administrator changed survives an upgrade, and the
# program's data folder leads there. The handbook lies in the data folder, where the program finds it, and shows itself
# among the documents.
set(ordner ${CMAKE_CURRENT_BINARY_DIR}/verweise)
file(MAKE_DIRECTORY ${ordner})
file(CREATE_LINK ${CMAKE_INSTALL_FULL_SYSCONFDIR}/lindgarn/Einstellungen.CFG ${ordner}/Einstellungen.CFG SYMBOLIC)
file(CREATE_LINK ../../lindgarn/Handbuch.html ${ordner}/Handbuch.html SYMBOLIC)
install(FILES ${CMAKE_SOURCE_DIR}/resources/Einstellungen.CFG DESTINATION ${CMAKE_INSTALL_FULL_SYSCONFDIR}/lindgarn)
install(FILES ${ordner}/Einstellungen.CFG DESTINATION ${daten})
install(FILES ${ordner}/Handbuch.html DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/lindgarn)
install(FILES debian/doc-base DESTINATION ${CMAKE_INSTALL_DATADIR}/doc-base RENAME lindgarn.handbuch)

set(aenderungen ${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian.gz)
add_custom_command(OUTPUT ${aenderungen}
    COMMAND ${GZIP} -9nc ${CMAKE_CURRENT_SOURCE_DIR}/debian/changelog > ${aenderungen}
    DEPENDS debian/changelog VERBATIM)
add_custom_target(aenderungen ALL DEPENDS ${aenderungen})
install(FILES ${aenderungen} debian/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/lindgarn)

# The changelog is the one place that says the package's version.
file(STRINGS debian/changelog kopfzeile LIMIT_COUNT 1)
if(NOT kopfzeile MATCHES "^lindgarn \\((${PROJECT_VERSION})-([0-9]+)\\) ")
    message(FATAL_ERROR "debian/changelog does not begin with version ${PROJECT_VERSION}: ${kopfzeile}")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lindgarn)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Lindgarn <support@lindgarn.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "find duplicates and junk in address tables")
set(CPACK_PACKAGE_DESCRIPTION "Lindgarn cleans the address tables of Access (.mdb), Excel (.xls) and dBase
(.dbf) files. It finds duplicates in spite of misspellings, sorts out junk
records, splits and merges fields, and sets a table against a second one. A
wizard leads to the result, which is a new table in the same file; the table
that one started from stays as it is.

The program speaks German.")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_2})
set(CPACK_DEBIAN_PACKAGE_SECTION database)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://www.lindgarn.example/)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/conffiles)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Libraries by what the program links; beside them the German texts of Qt's own buttons. libqt6svg6 brings the plugins
# that draw the pictures.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "hicolor-icon-theme, qt6-wayland")
include(CPack)
