# The Debian package: what `cmake --install` puts in place, with what Debian asks of a package (cmake/DebianFiles.cmake) and
# the libraries the programs were linked with.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillmark)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGE_CONTACT "The Quillmark developers <developers@quillmark.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/DebianFiles.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION editors)
# The words of the README.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "A desktop editor for programmers: text, source and bytes. It opens files of
any size and any content, changes nothing that you did not change, and says
what it cannot do before it writes.

It finds the encoding of a file and keeps it, writes files in place, so that
links, owner and permissions stay, and shows and changes a file byte by byte.
It colours and indents 48 languages, records macros, searches across folders,
and notices when another program changed an open file. All commands are
within reach of the keyboard.")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core, hunspell-en-us | hunspell-dictionary, shared-mime-info, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "desktop-file-utils, qt6-wayland")
include(CPack)
