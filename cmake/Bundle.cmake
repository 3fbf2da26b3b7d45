# The relocatable bundle, the same on every platform: Tunedeck.app in the build folder.
set(TUNEDECK_BUNDLE ${PROJECT_BINARY_DIR}/Tunedeck.app)
set(TUNEDECK_CONTENTS ${TUNEDECK_BUNDLE}/Contents)

configure_file(packaging/Info.plist ${TUNEDECK_CONTENTS}/Info.plist COPYONLY)
# As plain text, which every desktop can show.
configure_file(docs/desktops.md ${TUNEDECK_CONTENTS}/Resources/desktops.txt COPYONLY)

# The target "bundle" builds exactly the bundle's content.
add_custom_target(bundle)

# tunedeck_bundle_program(TARGET FOLDER NAME): builds TARGET as Contents/FOLDER/NAME.
function(tunedeck_bundle_program target folder name)
  set_target_properties(${target} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${TUNEDECK_CONTENTS}/${folder}
    LIBRARY_OUTPUT_DIRECTORY ${TUNEDECK_CONTENTS}/${folder}
    OUTPUT_NAME ${name}
    PREFIX "")
  add_dependencies(bundle ${target})
endfunction()
