#include "UpdateHelper/SandboxProfile.h"

#include <string_view>

namespace tunedeck::helper {

namespace {

/// A string of the profile's language, quoted.
std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            result += '\\';
        }
        result += c;
    }
    return result + '"';
}

} // namespace

// The last rule that matches decides.
std::string sandboxProfile(const Permissions& permissions) {
    std::string profile = "(version 1)\n"
                          "(allow default)\n"
                          "(deny process-exec* process-fork)\n"
                          "(deny signal (target others))\n"
                          "(deny file-write* file-link)\n"
                          "(allow file-write* (literal \"/dev/null\"))\n";
    if (!permissions.network) {
        // The system's libraries and their data stay readable: some are loaded only when first used.
        profile += "(deny network*)\n"
                   "(deny file-read-data)\n"
                   "(allow file-read-data (subpath \"/System\") (subpath \"/usr/lib\") (subpath \"/usr/share\")"
                   " (subpath \"/private/var/db/timezone\") (subpath \"/dev\"))\n";
    }
    for (const auto& file : permissions.files) {
        profile += "(allow file-read-data (literal " + quoted(file) + "))\n";
    }
    if (!permissions.folder.empty()) {
        const auto folder = "(subpath " + quoted(permissions.folder) + ")";
        profile += "(allow file-read-data " + folder + ")\n(allow file-write* " + folder + ")\n";
    }
    return profile;
}

} // namespace tunedeck::helper
