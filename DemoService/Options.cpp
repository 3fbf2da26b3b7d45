#include "DemoService/Options.h"

#include "DemoService/Scenarios/Scenarios.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace tunedeck::demo {

namespace {

template<class T>
std::optional<T> number(std::string_view text) {
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

/// Takes one option with a value; a sentence when the value is wrong.
std::optional<std::string> take(Options& options, const std::string& name, const std::string& value) {
    if (name == "--scenario") {
        if (findScenario(value) == nullptr) {
            return "There is no scenario \"" + value + "\"; --list-scenarios lists them.";
        }
        options.scenario = value;
    } else if (name == "--port") {
        const auto port = number<int>(value);
        if (!port || *port < 0 || *port > 65535) {
            return "The port must be a number from 0 to 65535.";
        }
        options.port = *port;
    } else {
        const auto speed = number<double>(value);
        if (!speed || std::isnan(*speed) || *speed <= 0 || *speed > 1000) {
            return "The speed must be a number above 0, at most 1000.";
        }
        options.speed = *speed;
    }
    return std::nullopt;
}

} // namespace

std::expected<Options, std::string> parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto equals = arguments[i].find('=');
        const std::string name = arguments[i].substr(0, equals);
        if (name == "--scenario" || name == "--port" || name == "--speed") {
            if (equals == std::string::npos && i + 1 == arguments.size()) {
                return std::unexpected(name + " needs a value.");
            }
            const std::string value = equals == std::string::npos ? arguments[++i] : arguments[i].substr(equals + 1);
            if (auto wrong = take(options, name, value)) {
                return std::unexpected(*wrong);
            }
        } else if (arguments[i] == "--reset") {
            options.reset = true;
        } else if (arguments[i] == "--help" || arguments[i] == "-h") {
            options.action = Options::Action::help;
        } else if (arguments[i] == "--version") {
            options.action = Options::Action::version;
        } else if (arguments[i] == "--list-scenarios") {
            options.action = Options::Action::listScenarios;
        } else {
            return std::unexpected("Unknown argument \"" + arguments[i] + "\"; --help tells what there is.");
        }
    }
    return options;
}

std::string helpText() {
    return R"(Usage: tunedeck [OPTION]...
A stand-in for Tunedeck's background service: it answers the same requests on 127.0.0.1 and lets things happen,
but downloads nothing and touches no Rekordbox library.

  --scenario NAME    start with this scenario (see --list-scenarios); without it go on where the last run ended
  --list-scenarios   list the scenarios
  --reset            forget what the last run left
  --port N           listen on this port rather than on any free one
  --speed X          let things happen X times faster
  --help, --version

It writes its port to ~/.tunedeck/runtime.json and its state to ~/.tunedeck/demo-state.json.
)";
}

} // namespace tunedeck::demo
