# Precompiled headers: parsing Qt, QCoro and the standard library takes most of each source's compile time. Each set is
# built once, by a separate library, and reused. Sources still include what they use, because the linters configure
# without precompiled headers (CMAKE_DISABLE_PRECOMPILE_HEADERS).
set(precompiled_core
  <QByteArray> <QCoroTask> <QDateTime> <QDir> <QFile> <QFileInfo> <QObject> <QString> <QStringList> <QUrl>
  <algorithm> <array> <chrono> <cstdint> <expected> <functional> <map> <memory> <optional> <ranges> <span>
  <stop_token> <string> <string_view> <tuple> <utility> <variant> <vector>)
set(precompiled_desktop ${precompiled_core} <QIcon> <QTimer> <QWidget>)
if(NOT APPLE)
  list(APPEND precompiled_desktop <QDBusConnection> <QDBusMessage>)
endif()
set(precompiled_views ${precompiled_core} <QQmlEngine> <QQuickItem> <QQuickWindow>)
set(precompiled_tests ${precompiled_core} <gtest/gtest.h>)

# tunedeck_precompiled_set(NAME LIBRARY…): precompiles the headers in precompiled_NAME for users of these libraries.
function(tunedeck_precompiled_set name)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/precompiled-${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "")
  add_library(precompiled-${name} STATIC ${source})
  set_target_properties(precompiled-${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
  target_link_libraries(precompiled-${name} PRIVATE tunedeck_flags ${ARGN})
  target_precompile_headers(precompiled-${name} PRIVATE ${precompiled_${name}})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(precompiled-${name} PRIVATE -fpch-preprocess)
  endif()
endfunction()

# tunedeck_precompile(TARGET NAME): makes TARGET use the set NAME (core, desktop, views or tests).
function(tunedeck_precompile target name)
  target_precompile_headers(${target} REUSE_FROM precompiled-${name})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE -fpch-preprocess)
  endif()
endfunction()

tunedeck_precompiled_set(core Qt6::Core QCoro6::Core)
tunedeck_precompiled_set(desktop Qt6::Widgets $<TARGET_NAME_IF_EXISTS:Qt6::DBus> QCoro6::Core)
tunedeck_precompiled_set(views Qt6::Quick QCoro6::Core)
if(TUNEDECK_TESTS OR TUNEDECK_FUZZ)
  tunedeck_precompiled_set(tests Qt6::Core QCoro6::Core GTest::gtest)
endif()
