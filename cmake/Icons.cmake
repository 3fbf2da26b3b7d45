# Paints the tray's and the application's icons at build time.
set(TUNEDECK_TRAY_SIZES 16 22 24 32 44 48 64)
set(TUNEDECK_APP_ICON_SIZES 16 32 48 64 128)                       # used by the application
set(TUNEDECK_THEME_ICON_SIZES 16 22 24 32 48 64 128 256 512)        # installed for desktops

add_executable(tunedeck-paint-icons ${PROJECT_SOURCE_DIR}/cmake/PaintIcons.cpp)
target_link_libraries(tunedeck-paint-icons PRIVATE tunedeck_flags Qt6::Svg)

# tunedeck_tray_icons(TARGET): compiles both tray symbols into TARGET as black masks with alpha, one PNG per size:
# :/tunedeck/tray/NAME-SIZE.png with NAME "music.note.list" or "exclamationmark.triangle".
function(tunedeck_tray_icons target)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/tray)
  file(MAKE_DIRECTORY ${folder})
  set(sources "")
  set(files "")
  set(entries "")
  foreach(name music.note.list exclamationmark.triangle)
    tunedeck_symbol_file(${name} drawing)
    list(APPEND sources ${name}=${drawing})
    foreach(size IN LISTS TUNEDECK_TRAY_SIZES)
      list(APPEND files ${folder}/${name}-${size}.png)
      string(APPEND entries "    <file>${name}-${size}.png</file>\n")
    endforeach()
  endforeach()
  add_custom_command(OUTPUT ${files}
    COMMAND tunedeck-paint-icons mask ${folder} ${sources} -- ${TUNEDECK_TRAY_SIZES}
    DEPENDS tunedeck-paint-icons VERBATIM COMMENT "Painting the tray icons")
  file(CONFIGURE OUTPUT ${folder}/tray.qrc CONTENT
    "<RCC>\n  <qresource prefix=\"/tunedeck/tray\">\n${entries}  </qresource>\n</RCC>\n")
  add_custom_command(OUTPUT ${folder}/tray.cpp
    COMMAND Qt6::rcc --name tunedeck_tray --output ${folder}/tray.cpp ${folder}/tray.qrc
    DEPENDS ${files} ${folder}/tray.qrc VERBATIM)
  # An object library, because the linker would drop a resource from a static library.
  add_library(${target}TrayIcons OBJECT ${folder}/tray.cpp)
  set_target_properties(${target}TrayIcons PROPERTIES AUTOMOC OFF AUTORCC OFF)
  target_link_libraries(${target}TrayIcons PRIVATE Qt6::Core)
  target_sources(${target} INTERFACE $<TARGET_OBJECTS:${target}TrayIcons>)
endfunction()

# The application's icon, for the bundle as Resources/tunedeck-SIZE.png and for desktops in TUNEDECK_THEME_ICONS.
set(app_icon_folder ${TUNEDECK_CONTENTS}/Resources)
set(TUNEDECK_THEME_ICONS ${PROJECT_BINARY_DIR}/icons)
file(MAKE_DIRECTORY ${app_icon_folder} ${TUNEDECK_THEME_ICONS})
tunedeck_symbol_file(music.note.list app_glyph)
list(TRANSFORM TUNEDECK_APP_ICON_SIZES REPLACE "(.+)" "${app_icon_folder}/tunedeck-\\1.png" OUTPUT_VARIABLE app_icons)
list(TRANSFORM TUNEDECK_THEME_ICON_SIZES REPLACE "(.+)" "${TUNEDECK_THEME_ICONS}/tunedeck-\\1.png"
  OUTPUT_VARIABLE theme_icons)
add_custom_command(OUTPUT ${app_icons} ${theme_icons}
  COMMAND tunedeck-paint-icons app ${app_icon_folder} ${app_glyph} -- ${TUNEDECK_APP_ICON_SIZES}
  COMMAND tunedeck-paint-icons app ${TUNEDECK_THEME_ICONS} ${app_glyph} -- ${TUNEDECK_THEME_ICON_SIZES}
  DEPENDS tunedeck-paint-icons VERBATIM COMMENT "Painting the application's icon")
# The same icon as SVG.
file(READ ${app_glyph} glyph_text)
string(REGEX REPLACE "^<svg[^>]*>|</svg>.*$" "" glyph_text "${glyph_text}")
file(CONFIGURE OUTPUT ${TUNEDECK_THEME_ICONS}/tunedeck.svg CONTENT [[
<svg xmlns="http://www.w3.org/2000/svg" width="128" height="128" viewBox="0 0 128 128">
  <defs><linearGradient id="plate" x1="0" y1="0" x2="1" y2="1">
    <stop offset="0" stop-color="#8c5cf7"/><stop offset="1" stop-color="#f04d99"/></linearGradient></defs>
  <rect x="8" y="8" width="112" height="112" rx="26.35" fill="url(#plate)"/>
  <g transform="translate(35.84 35.84) scale(3.52)" fill="#fff">@glyph_text@</g>
</svg>
]] @ONLY)
add_custom_target(app-icons ALL DEPENDS ${app_icons} ${theme_icons})
add_dependencies(bundle app-icons)
