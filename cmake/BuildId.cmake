# An id that the application and the panel's module must share, because they exchange C++ types across dlopen(). It is
# derived from the version, the shared headers, the compiler, Qt and the build type. The application gets it from
# TunedeckBuildId.h; the module has it as "buildId" in its plugin metadata, which is readable without loading the module.
file(GLOB_RECURSE build_id_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/TunedeckMenu/Panel/*.h)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${build_id_headers})
set(build_id_text
  "${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION} ${Qt6_VERSION} ${CMAKE_BUILD_TYPE} ${TUNEDECK_SANITIZE}")
foreach(header IN LISTS build_id_headers)
  file(SHA256 ${header} hash)
  string(APPEND build_id_text " ${hash}")
endforeach()
string(SHA256 build_id_hash "${build_id_text}")
string(SUBSTRING ${build_id_hash} 0 16 build_id_hash)
set(TUNEDECK_BUILD_ID "${PROJECT_VERSION}-${build_id_hash}")

set(TUNEDECK_GENERATED ${PROJECT_BINARY_DIR}/generated)
file(CONFIGURE OUTPUT ${TUNEDECK_GENERATED}/TunedeckBuildId.h CONTENT
"#pragma once

namespace tunedeck {
/// The panel's module is loaded only if its plugin metadata has this \"buildId\".
inline constexpr const char* buildId = \"@TUNEDECK_BUILD_ID@\";
} // namespace tunedeck
" @ONLY)
file(CONFIGURE OUTPUT ${TUNEDECK_GENERATED}/PanelModule.json CONTENT "{\"buildId\": \"@TUNEDECK_BUILD_ID@\"}\n" @ONLY)

# Provides the include path of TunedeckBuildId.h and PanelModule.json.
add_library(tunedeck_build_id INTERFACE)
target_include_directories(tunedeck_build_id INTERFACE ${TUNEDECK_GENERATED})
