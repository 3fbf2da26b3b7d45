#include "UpdateHelper/Options.h"

#include <charconv>

namespace tunedeck::helper {

namespace {

template<class Number>
bool parseNumber(const std::string& text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number > 0;
}

} // namespace

std::optional<Options> Options::parse(const std::vector<std::string>& words) {
    Options options;
    const auto count = words.size();
    if (count < 3 || !parseNumber(words[1], options.parent)) {
        return std::nullopt;
    }
    options.subcommand = words[0];
    const bool isFetch = options.subcommand == "fetch";
    options.operands.assign(words.begin() + (isFetch && count == 5 ? 4 : 2), words.end());
    const bool isValid =
        isFetch ? count == 5 && parseNumber(words[2], options.limit) && parseNumber(words[3], options.timeout)
        : options.subcommand == "unpack" ? count == 6 && words[2].starts_with('/')
        : options.subcommand == "verify" ? count == 4 || (count == 3 && words[2].starts_with('/'))
                                         : false;
    return isValid ? std::optional(options) : std::nullopt;
}

} // namespace tunedeck::helper
