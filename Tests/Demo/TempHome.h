#pragma once

#include "DemoService/World/Downloads.h"

#include <stdlib.h>

#include <filesystem>
#include <string>

namespace tunedeck::demo {

/// A home folder of its own that goes with the test.
struct TempHome {
    TempHome() {
        std::string name = std::filesystem::temp_directory_path() / "tunedeck-demo-XXXXXX";
        paths.home = ::mkdtemp(name.data());
    }
    ~TempHome() {
        std::error_code ignored;
        std::filesystem::remove_all(paths.home, ignored);
    }
    TempHome(const TempHome&) = delete;
    TempHome& operator=(const TempHome&) = delete;

    HomePaths paths;
};

} // namespace tunedeck::demo
