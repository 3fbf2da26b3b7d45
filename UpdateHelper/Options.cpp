#include "UpdateHelper/Options.h"

#include <getopt.h>

#include <array>
#include <charconv>
#include <string_view>

namespace tunedeck::fetch {

namespace {

template<class Number>
bool read(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 0;
}

} // namespace

std::optional<Options> parseOptions(int argc, char** argv) {
    Options options;
    const std::array known{
        option{"file", required_argument, nullptr, 'f'},    option{"limit", required_argument, nullptr, 'l'},
        option{"timeout", required_argument, nullptr, 't'}, option{"stall", required_argument, nullptr, 's'},
        option{"parent", required_argument, nullptr, 'p'},  option{nullptr, 0, nullptr, 0},
    };
    bool good = true;
    for (int found = 0; (found = getopt_long(argc, argv, "", known.data(), nullptr)) != -1;) {
        switch (found) {
        case 'f':
            options.file = optarg;
            break;
        case 'l':
            good = good && read(optarg, options.limit);
            break;
        case 't':
            good = good && read(optarg, options.timeout);
            break;
        case 's':
            good = good && read(optarg, options.stall);
            break;
        case 'p':
            good = good && read(optarg, options.parent);
            break;
        default:
            good = false;
        }
    }
    if (!good || optind + 1 != argc || options.file.empty() || options.limit == 0) {
        return std::nullopt;
    }
    options.url = argv[optind];
    return options;
}

} // namespace tunedeck::fetch
