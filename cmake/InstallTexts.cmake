# Runs during the installation: creates the command's link and the texts that contain the version or a date, which is that
# of SOURCE_DATE_EPOCH if set.
set(root $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX})
string(TIMESTAMP DATE %Y-%m-%d UTC)
string(TIMESTAMP RFC_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)

file(MAKE_DIRECTORY ${root}/bin)
file(CREATE_LINK ../lib/tunedeck/Tunedeck.app/Contents/MacOS/Tunedeck ${root}/bin/${COMMAND_NAME} SYMBOLIC)

configure_file(${SOURCE}/packaging/linux/${IDENTIFIER}.metainfo.xml.in
  ${root}/share/metainfo/${IDENTIFIER}.metainfo.xml @ONLY)
configure_file(${SOURCE}/packaging/linux/${COMMAND_NAME}.1.in ${root}/share/man/man1/${COMMAND_NAME}.1 @ONLY)
configure_file(${SOURCE}/packaging/debian/changelog.in ${root}/share/doc/tunedeck/changelog.Debian @ONLY)
configure_file(${SOURCE}/CHANGELOG.md ${root}/share/doc/tunedeck/changelog COPYONLY)
foreach(text man/man1/${COMMAND_NAME}.1 doc/tunedeck/changelog.Debian doc/tunedeck/changelog)
  execute_process(COMMAND gzip -9nf ${root}/share/${text} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
