# Maps the symbols' names to files of Debian's package bootstrap-icons.
set(TUNEDECK_SYMBOL_FOLDER /usr/share/bootstrap-icons/svg CACHE PATH "Folder of the Bootstrap Icons")
set(TUNEDECK_SYMBOLS
  "arrow.clockwise=arrow-clockwise"
  "arrow.down.circle=arrow-down-circle"
  "arrow.down.circle.fill=arrow-down-circle-fill"
  "arrow.right=arrow-right"
  "arrow.up.circle.fill=arrow-up-circle-fill"
  "asterisk=asterisk"
  "bolt.horizontal.circle=lightning-charge"
  "bubble.left.and.bubble.right=chat-dots"
  "checkmark=check-lg"
  "checkmark.circle=check-circle"
  "checkmark.circle.fill=check-circle-fill"
  "checkmark.shield.fill=shield-fill-check"
  "chevron.right=chevron-right"
  "circle=circle"
  "circle.fill=circle-fill"
  "clock=clock"
  "clock.badge.xmark=calendar-x"
  "clock.fill=clock-fill"
  "doc.on.doc=files"
  "doc.text=file-earmark-text"
  "doc.text.magnifyingglass=journal-text"
  "ellipsis.circle=three-dots"
  "exclamationmark.triangle=exclamation-triangle"
  "exclamationmark.triangle.fill=exclamation-triangle-fill"
  "eye=eye"
  "eye.slash=eye-slash"
  "folder=folder"
  "folder.fill=folder-fill"
  "info.circle=info-circle"
  "iphone=phone"
  "menubar.rectangle=window"
  "music.note.list=music-note-list"
  "paperplane=send"
  "plus=plus-lg"
  "power=power"
  "qrcode=qr-code"
  "shield=shield"
  "sparkles=stars"
  "square.stack.3d.up=stack"
  "wrench.and.screwdriver=tools"
  "xmark=x-lg"
  "xmark.circle.fill=x-circle-fill"
  "xmark.octagon.fill=x-octagon-fill")

# tunedeck_symbol_file(NAME VARIABLE): sets VARIABLE to the SVG file of a symbol.
function(tunedeck_symbol_file name variable)
  foreach(pair IN LISTS TUNEDECK_SYMBOLS)
    if(pair MATCHES "^(.*)=(.*)$" AND CMAKE_MATCH_1 STREQUAL name)
      set(file ${TUNEDECK_SYMBOL_FOLDER}/${CMAKE_MATCH_2}.svg)
      if(NOT EXISTS ${file})
        message(FATAL_ERROR "${file} is missing; install the package bootstrap-icons")
      endif()
      set(${variable} ${file} PARENT_SCOPE)
      return()
    endif()
  endforeach()
  message(FATAL_ERROR "there is no symbol ${name}; add it to cmake/Symbols.cmake")
endfunction()

# tunedeck_symbol_resources(TARGET): compiles all symbols into TARGET as :/tunedeck/symbols/NAME.svg.
function(tunedeck_symbol_resources target)
  set(entries "")
  foreach(pair IN LISTS TUNEDECK_SYMBOLS)
    string(REGEX REPLACE "=.*" "" name ${pair})
    tunedeck_symbol_file(${name} file)
    string(APPEND entries "    <file alias=\"${name}.svg\">${file}</file>\n")
  endforeach()
  file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/symbols.qrc CONTENT
    "<RCC>\n  <qresource prefix=\"/tunedeck/symbols\">\n${entries}  </qresource>\n</RCC>\n")
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/symbols.qrc)
endfunction()
