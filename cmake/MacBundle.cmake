# The bundle's icon and its signature on macOS. The target "signed-bundle" builds the bundle and signs it ad hoc, which is
# enough on the machine that built it; notifications and the login item need a signature.
set(iconset ${PROJECT_BINARY_DIR}/Tunedeck.iconset)
set(painted ${PROJECT_BINARY_DIR}/mac-icons)
set(mac_icon ${TUNEDECK_CONTENTS}/Resources/Tunedeck.icns)
file(MAKE_DIRECTORY ${iconset} ${painted})
set(copies "")
foreach(size 16 32 128 256 512)
  math(EXPR double "2 * ${size}")
  list(APPEND copies
    COMMAND ${CMAKE_COMMAND} -E copy ${painted}/tunedeck-${size}.png ${iconset}/icon_${size}x${size}.png
    COMMAND ${CMAKE_COMMAND} -E copy ${painted}/tunedeck-${double}.png ${iconset}/icon_${size}x${size}@2x.png)
endforeach()
add_custom_command(OUTPUT ${mac_icon}
  COMMAND tunedeck-paint-icons app ${painted} ${app_glyph} -- 16 32 64 128 256 512 1024
  ${copies}
  COMMAND iconutil --convert icns --output ${mac_icon} ${iconset}
  DEPENDS tunedeck-paint-icons VERBATIM COMMENT "Making the bundle's icon")
add_custom_target(mac-icon DEPENDS ${mac_icon})
add_dependencies(bundle mac-icon)

add_custom_target(signed-bundle
  COMMAND codesign --force --deep --sign - ${TUNEDECK_BUNDLE}
  DEPENDS bundle VERBATIM COMMENT "Signing the bundle ad hoc")
