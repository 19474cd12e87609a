# What `cmake --install` puts in place, and the Debian package CPack makes of it
# (`cpack -G DEB` in the build folder; scripts/package.sh does all of it).
# Only the program and kelvane-cal are installed: the developer tools, the
# tests and the static libraries have no install rules.
include(GNUInstallDirs)

install(TARGETS kelvane kelvane-cal RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(KELVANE_PACKAGING_DIR ${PROJECT_SOURCE_DIR}/packaging)
install(FILES ${KELVANE_PACKAGING_DIR}/kelvane.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${KELVANE_PACKAGING_DIR}/kelvane.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES ${KELVANE_PACKAGING_DIR}/kelvane-cal.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
# The icons are made from the program's own picture by kelvane-icon-export; a
# test keeps them equal to it. The sizes are those of kProgramIconSizes.
foreach(size IN ITEMS 16 24 32 48 64 128 256)
    install(FILES ${KELVANE_PACKAGING_DIR}/icons/hicolor/${size}x${size}/apps/kelvane.png
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kelvane)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Kelvane developers")
set(CPACK_PACKAGE_CONTACT "Kelvane developers <kelvane@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop calendar and day planner")
# The long description, as the package's control file shows it below the
# summary; a blank line starts a new paragraph.
set(CPACK_PACKAGE_DESCRIPTION [=[
Kelvane shows one month at a time as a grid of day cells. Every day can
carry a title, a text and a back colour, a schedule of up to 40 timed
activities and a note. A side panel shows today's schedule, and a watch
announces activities as they start and end. Calendars are saved as
line-oriented .cal text files.

The package also holds kelvane-cal, which works with calendar files from
the command line and exchanges them with iCalendar files.]=])
# Binaries go in stripped; the debug information stays in the build tree.
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/CompressManPages.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${CPACK_PACKAGE_CONTACT})
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The libraries the two programs link, with their versions, come from
# dpkg-shlibdeps. Qt's xcb and offscreen platform plugins are part of
# libqt6gui6, which that list holds already. The desktop, MIME and icon
# databases are brought up to date by the triggers of desktop-file-utils,
# shared-mime-info and hicolor-icon-theme, so the package needs no scripts.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The architecture is left to CPack, which asks dpkg --print-architecture.

include(CPack)
