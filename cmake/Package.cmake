# The installed files, and the Debian package and the tarball of them. The target "bundle" builds the files;
# ./tools/package builds and tests both packages.

# Not "tunedeck", which is the service's program.
set(TUNEDECK_COMMAND tunedeck-app)

# tunedeck_install_bundle(COMPONENT FOLDER): installs the bundle below FOLDER, without debug symbols.
function(tunedeck_install_bundle component folder)
  set(contents ${folder}/Tunedeck.app/Contents)
  install(TARGETS Tunedeck RUNTIME DESTINATION ${contents}/MacOS COMPONENT ${component})
  install(TARGETS tunedeck-update RUNTIME DESTINATION ${contents}/Helpers COMPONENT ${component})
  if(TUNEDECK_SERVICE_PROGRAM)
    install(PROGRAMS ${TUNEDECK_CONTENTS}/Helpers/tunedeck DESTINATION ${contents}/Helpers COMPONENT ${component})
  else()
    install(TARGETS tunedeck_demo RUNTIME DESTINATION ${contents}/Helpers COMPONENT ${component})
  endif()
  install(TARGETS TunedeckPanelModule LIBRARY DESTINATION ${contents}/PlugIns COMPONENT ${component})
  install(FILES ${TUNEDECK_CONTENTS}/Info.plist DESTINATION ${contents} COMPONENT ${component})
  install(FILES ${TUNEDECK_CONTENTS}/Resources/desktops.txt
    DESTINATION ${contents}/Resources COMPONENT ${component})
  foreach(size IN LISTS TUNEDECK_APP_ICON_SIZES)
    install(FILES ${TUNEDECK_CONTENTS}/Resources/tunedeck-${size}.png
      DESTINATION ${contents}/Resources COMPONENT ${component})
  endforeach()
endfunction()

set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
tunedeck_install_bundle(portable .)
tunedeck_install_bundle(system lib/tunedeck)

# What makes the application known to the desktop.
set(linux_files ${PROJECT_SOURCE_DIR}/packaging/linux)
set(theme share/icons/hicolor)
install(FILES ${linux_files}/${TUNEDECK_IDENTIFIER}.desktop DESTINATION share/applications COMPONENT system)
install(FILES ${linux_files}/${TUNEDECK_IDENTIFIER}.service DESTINATION share/dbus-1/services COMPONENT system)
foreach(size IN LISTS TUNEDECK_THEME_ICON_SIZES)
  install(FILES ${TUNEDECK_THEME_ICONS}/tunedeck-${size}.png
    DESTINATION ${theme}/${size}x${size}/apps RENAME ${TUNEDECK_IDENTIFIER}.png COMPONENT system)
endforeach()
install(FILES ${TUNEDECK_THEME_ICONS}/tunedeck.svg
  DESTINATION ${theme}/scalable/apps RENAME ${TUNEDECK_IDENTIFIER}.svg COMPONENT system)
install(FILES ${linux_files}/${TUNEDECK_COMMAND}.bash
  DESTINATION share/bash-completion/completions RENAME ${TUNEDECK_COMMAND} COMPONENT system)
install(FILES ${linux_files}/_${TUNEDECK_COMMAND} DESTINATION share/zsh/vendor-completions COMPONENT system)
install(FILES ${linux_files}/${TUNEDECK_COMMAND}.fish DESTINATION share/fish/vendor_completions.d COMPONENT system)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/debian/copyright DESTINATION share/doc/tunedeck COMPONENT system)
install(CODE "
  set(COMMAND_NAME ${TUNEDECK_COMMAND})
  set(IDENTIFIER ${TUNEDECK_IDENTIFIER})
  set(VERSION ${PROJECT_VERSION})
  set(WEB_ENDPOINT \"${TUNEDECK_WEB_ENDPOINT}\")
  set(MAINTAINER \"${TUNEDECK_MAINTAINER}\")
  set(SOURCE ${PROJECT_SOURCE_DIR})
  include(${PROJECT_SOURCE_DIR}/cmake/InstallTexts.cmake)" COMPONENT system)

set(CPACK_PACKAGE_NAME tunedeck)
set(CPACK_PACKAGE_VENDOR Brightfold)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/build/packages)
set(CPACK_PACKAGE_FILE_NAME tunedeck-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_GENERATOR DEB TXZ)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/PackageOptions.cmake)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_NAME tunedeck)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${TUNEDECK_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${TUNEDECK_WEB_ENDPOINT})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "tray companion of the Tunedeck background service")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Tunedeck looks after the service that downloads the music that you ask for
from your phone or an AI assistant and files it into your Rekordbox library.
It installs the service for the user who starts it, keeps it running, shows
what it is doing and lets you act on it.

The Rekordbox library is backed up before each change, and ChatGPT, Claude, a
Telegram bot or an iPhone Shortcut each get a private link.")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# Dependencies: the libraries that the programs link, the QML modules that the panel imports (PackageOptions.cmake), and
# the user's service manager, which runs the service.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS libpam-systemd)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "ca-certificates, default-dbus-session-bus | dbus-session-bus, qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/debian/prerm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_TUNEDECK_QML ${PROJECT_SOURCE_DIR}/TunedeckMenu/Views)
get_target_property(qmake Qt6::qmake IMPORTED_LOCATION)
foreach(place QT_INSTALL_QML QT_INSTALL_LIBEXECS)
  execute_process(COMMAND ${qmake} -query ${place} OUTPUT_VARIABLE CPACK_TUNEDECK_${place}
    OUTPUT_STRIP_TRAILING_WHITESPACE)
endforeach()
include(CPack)
