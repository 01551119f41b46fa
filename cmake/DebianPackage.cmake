# `make package` (cpack -G DEB in the build folder) makes wordbm_<version>_amd64.deb from the
# installed files under /usr. dpkg-shlibdeps finds the shared libraries the programs link; what they
# only use at run time is listed by hand: LibreOffice Writer for the PDF worker, the fonts the forms
# name (Arial, Times New Roman and Courier New through their Liberation twins; Calibri and Cambria
# through Carlito and Caladea), the CUPS client for printing, and Qt's SVG plugins for the icon.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME wordbm)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(WORDBM_PACKAGE_MAINTAINER "WordBM maintainers <maintainers@users.noreply.c-seed-cfc5d5bb.example>"
    CACHE STRING "Maintainer field of the Debian package")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${WORDBM_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libreoffice-writer-nogui | libreoffice-writer, fonts-liberation2, cups-client, libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-crosextra-carlito, fonts-crosextra-caladea")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cups")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The summary line; CPack puts it before the long description in English and German.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "bookmarks, mail merge and Swiss QR-bill for Word invoice forms")
file(READ "${CMAKE_CURRENT_LIST_DIR}/../packaging/description" CPACK_DEBIAN_PACKAGE_DESCRIPTION)

include(CPack)
