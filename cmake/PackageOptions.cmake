# Read by CPack for each package: its components, and the Debian package's dependencies other than libraries.
if(CPACK_GENERATOR STREQUAL "DEB")
  set(CPACK_COMPONENTS_ALL system)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)

  # The packages of the QML modules that the panel imports directly or indirectly.
  execute_process(
    COMMAND ${CPACK_TUNEDECK_QT_INSTALL_LIBEXECS}/qmlimportscanner
      -rootPath ${CPACK_TUNEDECK_QML} -importPath ${CPACK_TUNEDECK_QT_INSTALL_QML}
    OUTPUT_VARIABLE imports COMMAND_ERROR_IS_FATAL ANY)
  string(JSON last LENGTH "${imports}")
  math(EXPR last "${last} - 1")
  foreach(index RANGE ${last})
    string(JSON name GET "${imports}" ${index} name)
    string(JSON folder ERROR_VARIABLE missing GET "${imports}" ${index} path)
    if(missing)
      if(NOT name MATCHES "^Tunedeck\\.")
        message(FATAL_ERROR "The panel imports ${name}, which isn't installed")
      endif()
      continue() # the panel's own module, compiled in
    endif()
    execute_process(COMMAND dpkg-query -S ${folder}/qmldir OUTPUT_VARIABLE owner COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE ":.*" "" owner "${owner}")
    string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ", ${owner}")
  endforeach()
else()
  set(CPACK_COMPONENTS_ALL portable)
endif()
