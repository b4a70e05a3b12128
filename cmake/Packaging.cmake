# The Debian package of both programs; tools/package makes it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME peoplenook)
set(CPACK_PACKAGE_VENDOR "The Brindle PeopleNook developers")
set(CPACK_PACKAGE_CONTACT "The Brindle PeopleNook developers <developers@peoplenook.example.org>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://peoplenook.example.org/)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "finds and repairs malformed and duplicate contacts")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Brindle PeopleNook scans an address book for thirteen kinds of faults, such as
incomplete names, repeated numbers and people who are there twice, shows what
each repair would do, and changes only what it is told to. Contacts come from
vCard files and are edited in one table.
.
The package holds the desktop application and a command line for scripts.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The symbols on buttons, for desktops without an icon theme, and what reads them.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "adwaita-icon-theme, libqt6svg6")
# Loaded at run time, so not found as dependencies: viewers of the manual and web pages, Wayland windows, and the
# desktop's address books.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, qt6-wayland, evolution-data-server")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
