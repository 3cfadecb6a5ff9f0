# The Debian package, made by CPack from the install rules:
#
#   cmake --build build --target package      (or: cd build && cpack)
#
# writes build/vistrel_<version>_<arch>.deb.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vistrel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Vistrel developers")
set(CPACK_PACKAGE_CONTACT "The Vistrel developers <packages@vistrel.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "browse and organise pictures, videos, audios and documents")
set(CPACK_PACKAGE_DESCRIPTION
  "Vistrel lists a folder or an album in four tabs of thumbnails, opens files in
its own viewers and players, runs slideshows, keeps albums and picture
captions in an encrypted data file, searches the disks, copies, moves,
renames and wipes files, edits MP3 tags and lists audio CDs with their
titles.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://vistrel.org/")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The libraries the two programs link come from dpkg-shlibdeps.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no link reveals:
#   libqt6gui6                   the X11 (xcb) platform plugin Qt loads at start
#   libqt6svg6                   the SVG picture and icon plugins (the buttons' art)
#   qt6-image-formats-plugins    TIFF, ICO, MNG and the other picture plugins
#   libemf2svg1                  opened by vistrel-decode for EMF pictures
#   espeak-ng-data               the voices of the guided tour
#   timgm6mb-soundfont           the sound font MIDI files play with
#   fonts-urw-base35             the fonts metafile pictures are drawn with
#   xdg-utils                    xdg-email for sending pictures
#   shared-mime-info             the file types the desktop opens files by
#   qt6-wayland                  the Wayland platform plugin, for a Wayland
#                                session without an X server beside it
set(VISTREL_RUNTIME_PACKAGES
  libqt6gui6 libqt6svg6 qt6-image-formats-plugins libemf2svg1 espeak-ng-data
  timgm6mb-soundfont fonts-urw-base35 xdg-utils shared-mime-info qt6-wayland)
list(JOIN VISTREL_RUNTIME_PACKAGES ", " CPACK_DEBIAN_PACKAGE_DEPENDS)

include(CPack)
