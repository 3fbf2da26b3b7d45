#pragma once

#include <expected>
#include <string>
#include <vector>

namespace tunedeck::demo {

/// What the command line asks for.
struct Options {
    enum class Action { serve, help, version, listScenarios };

    Action action = Action::serve;
    /// Empty: go on with the state file's scenario, else the default one.
    std::string scenario;
    /// 0: any free port.
    int port = 0;
    double speed = 1;
    /// Forget the state file.
    bool reset = false;
};

/// Reads the arguments after the program's name; a sentence about the first wrong one otherwise.
std::expected<Options, std::string> parseOptions(const std::vector<std::string>& arguments);

/// The text of --help.
std::string helpText();

} // namespace tunedeck::demo
