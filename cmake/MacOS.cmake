# What is different on macOS. Nothing of this file has been run yet; docs/macos.md says what was verified.
enable_language(OBJCXX)
set(CMAKE_OBJCXX_STANDARD 23)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_VISIBILITY_PRESET hidden)
set(CMAKE_OBJCXX_FLAGS_RELEASE "-Os -DNDEBUG")
# Precompiled headers of C++ don't suit Objective-C++.
set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
# The benchmarks read /proc.
set(TUNEDECK_BENCHMARKS OFF)

# Homebrew's Qt is newer than Debian's, which decides what may be used.
add_compile_definitions(QT_WARN_DEPRECATED_UP_TO=0x060400)

include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_FLAGS -std=c++23)
check_cxx_source_compiles("
  #include <expected>
  #include <stop_token>
  int main() { return std::stop_source().stop_requested() || !std::expected<int, int>(1); }" TUNEDECK_HAS_LIBRARY)
unset(CMAKE_REQUIRED_FLAGS)
if(NOT TUNEDECK_HAS_LIBRARY)
  message(FATAL_ERROR "The compiler's library has no std::stop_token or std::expected; install Xcode 26 or later")
endif()

# tunedeck_link_platform(TARGET): the frameworks of the platform's classes, and their dialect.
function(tunedeck_link_platform target)
  target_link_libraries(${target} PRIVATE
    "-framework AppKit" "-framework ServiceManagement" "-framework UserNotifications")
  # Objective-C methods name their parameters, used or not.
  target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc -Wno-unused-parameter>)
endfunction()
