# Language standard, warnings and instrumentation of all targets.
set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
# For size: pages of the program are a good part of what a resident process costs, and none of its work is slow.
set(CMAKE_CXX_FLAGS_RELEASE "-Os -DNDEBUG")
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)

find_program(TUNEDECK_CCACHE ccache)
if(TUNEDECK_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${TUNEDECK_CCACHE})
endif()

# No warning about missing initialisers: designated initialisers omit members that keep their defaults.
add_library(tunedeck_flags INTERFACE)
target_include_directories(tunedeck_flags INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(tunedeck_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-align -Woverloaded-virtual
  -Wconversion -Wno-sign-conversion -Wno-missing-field-initializers -Werror -fstack-protector-strong)
target_compile_definitions(tunedeck_flags INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_compile_options(tunedeck_flags INTERFACE $<$<CONFIG:Release>:-ffunction-sections -fdata-sections>)
if(APPLE)
  target_link_options(tunedeck_flags INTERFACE $<$<CONFIG:Release>:-Wl,-dead_strip>)
else()
  target_link_options(tunedeck_flags INTERFACE -Wl,--as-needed -Wl,-z,relro,-z,now
    $<$<CONFIG:Release>:-Wl,--gc-sections>)
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 reports false positives for std::optional, std::expected and coroutine frames.
  target_compile_options(tunedeck_flags INTERFACE
    -Wno-maybe-uninitialized -Wno-subobject-linkage $<$<CONFIG:Release>:-Wno-array-bounds -Wno-stringop-overflow
    -Wno-restrict -Wno-dangling-pointer>)
endif()
if(TUNEDECK_SANITIZE)
  target_compile_options(tunedeck_flags INTERFACE
    -fsanitize=${TUNEDECK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tunedeck_flags INTERFACE -fsanitize=${TUNEDECK_SANITIZE})
else()
  target_compile_definitions(tunedeck_flags INTERFACE $<$<CONFIG:Release>:_FORTIFY_SOURCE=2>)
endif()
if(TUNEDECK_FUZZ)
  target_compile_options(tunedeck_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(TUNEDECK_COVERAGE)
  target_compile_options(tunedeck_flags INTERFACE --coverage)
  target_link_options(tunedeck_flags INTERFACE --coverage)
endif()
