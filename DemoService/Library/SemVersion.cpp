#include "DemoService/Library/SemVersion.h"

#include <cstdio>

namespace tunedeck::demo {

std::string raised(std::string_view version, Bump bump) {
    int major = 0;
    int minor = 0;
    int patch = 0;
    const std::string copy(version);
    if (std::sscanf(copy.c_str(), "%9d.%9d.%9d", &major, &minor, &patch) != 3) {
        return "1.0.0";
    }
    switch (bump) {
    case Bump::major:
        return std::to_string(major + 1) + ".0.0";
    case Bump::minor:
        return std::to_string(major) + "." + std::to_string(minor + 1) + ".0";
    case Bump::patch:
        break;
    }
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch + 1);
}

} // namespace tunedeck::demo
