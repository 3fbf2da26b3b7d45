#include "UpdateHelper/Options.h"

#include <getopt.h>

#include <array>
#include <charconv>
#include <string_view>

namespace tunedeck::fetch {

namespace {

template<class Number>
bool parseNumber(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 0;
}

} // namespace

std::optional<Options> Options::parse(int argc, char** argv) {
    Options options;
    const std::array known{
        option{"parent", required_argument, nullptr, 'p'},
        option{"file", required_argument, nullptr, 'f'},
        option{"limit", required_argument, nullptr, 'l'},
        option{"timeout", required_argument, nullptr, 't'},
        option{nullptr, 0, nullptr, 0},
    };
    bool valid = true;
    for (int found = 0; (found = getopt_long(argc, argv, "", known.data(), nullptr)) != -1;) {
        switch (found) {
        case 'p':
            valid = valid && parseNumber(optarg, options.parent);
            break;
        case 'f':
            options.file = optarg;
            break;
        case 'l':
            valid = valid && parseNumber(optarg, options.limit);
            break;
        case 't':
            valid = valid && parseNumber(optarg, options.timeout);
            break;
        default:
            valid = false;
        }
    }
    if (!valid || optind + 1 != argc || options.parent == 0 || options.file.empty() || options.limit == 0) {
        return std::nullopt;
    }
    options.url = argv[optind];
    return options;
}

} // namespace tunedeck::fetch
