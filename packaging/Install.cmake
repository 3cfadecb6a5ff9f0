# Installing Vistrel (cmake --install, and the Debian package made by CPack
# from the same rules). With the prefix /usr:
#
#   /usr/lib/vistrel/           the program folder: Vistrel, vistrel-decode,
#                               the fresh Vistrel.VRD, tutorial/Merlin.character
#   /usr/bin/vistrel            the command that starts the program
#   /usr/share/applications/    the desktop entry
#   /usr/share/icons/hicolor/   the icon, as SVG and in the fixed PNG sizes
#   /usr/share/metainfo/        the software centre's description
#
# The program folder is fixed at lib/vistrel rather than the multiarch
# library folder: it is the program's own folder, not a shared library's.

# A Debian system's own programs live under /usr; /usr/local stays the
# choice of whoever asks for it with --prefix or CMAKE_INSTALL_PREFIX.
if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
  set(CMAKE_INSTALL_PREFIX /usr CACHE PATH "Where cmake --install puts Vistrel" FORCE)
endif()

set(VISTREL_APP_ID org.vistrel.Vistrel)
set(VISTREL_INSTALL_PROGRAM_DIR lib/vistrel)
set(VISTREL_PACKAGING_DIR ${CMAKE_CURRENT_LIST_DIR})

install(TARGETS Vistrel RUNTIME DESTINATION ${VISTREL_INSTALL_PROGRAM_DIR})
if(TARGET vistrel-decode)
  install(TARGETS vistrel-decode RUNTIME DESTINATION ${VISTREL_INSTALL_PROGRAM_DIR})
endif()
# The fresh data file as the build made it: the build's program folder may
# hold one that a run of the program has already filled.
if(DEFINED VISTREL_FRESH_DATA_FILE)
  install(FILES ${VISTREL_FRESH_DATA_FILE} DESTINATION ${VISTREL_INSTALL_PROGRAM_DIR})
endif()
if(DEFINED VISTREL_CHARACTER_SOURCE)
  install(FILES ${VISTREL_CHARACTER_SOURCE} DESTINATION ${VISTREL_INSTALL_PROGRAM_DIR}/tutorial)
endif()

install(PROGRAMS ${VISTREL_PACKAGING_DIR}/vistrel.sh DESTINATION bin RENAME vistrel)
install(FILES ${VISTREL_PACKAGING_DIR}/${VISTREL_APP_ID}.desktop DESTINATION share/applications)
install(FILES ${VISTREL_PACKAGING_DIR}/${VISTREL_APP_ID}.metainfo.xml DESTINATION share/metainfo)

# The icon: the SVG for every size, and PNGs drawn from it at build time for
# the menus and panels that want a fixed size.
set(VISTREL_ICON_SVG ${VISTREL_PACKAGING_DIR}/${VISTREL_APP_ID}.svg)
set(VISTREL_ICON_SIZES 16 24 32 48 64 128 256)
set(VISTREL_ICON_DIR ${CMAKE_BINARY_DIR}/icons)
include(${CMAKE_SOURCE_DIR}/tools/icon-render/IconRender.cmake)
set(VISTREL_ICON_PNGS)
foreach(size IN LISTS VISTREL_ICON_SIZES)
  list(APPEND VISTREL_ICON_PNGS ${VISTREL_ICON_DIR}/${size}x${size}.png)
endforeach()
add_custom_command(
  OUTPUT ${VISTREL_ICON_PNGS}
  COMMAND render-icon ${VISTREL_ICON_SVG} ${VISTREL_ICON_DIR} ${VISTREL_ICON_SIZES}
  DEPENDS render-icon ${VISTREL_ICON_SVG}
  COMMENT "Drawing the icon's PNG sizes"
  VERBATIM)
add_custom_target(VistrelIcons ALL DEPENDS ${VISTREL_ICON_PNGS})

install(FILES ${VISTREL_ICON_SVG} DESTINATION share/icons/hicolor/scalable/apps)
foreach(size IN LISTS VISTREL_ICON_SIZES)
  install(FILES ${VISTREL_ICON_DIR}/${size}x${size}.png
          DESTINATION share/icons/hicolor/${size}x${size}/apps
          RENAME ${VISTREL_APP_ID}.png)
endforeach()

include(${VISTREL_PACKAGING_DIR}/Package.cmake)
