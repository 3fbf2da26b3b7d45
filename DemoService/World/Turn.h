#pragma once

#include "DemoService/Files/Log.h"
#include "DemoService/World/Clock.h"
#include "DemoService/World/Random.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tunedeck::demo {

/// What a part of the world gets when its time goes on or somebody acts on it: the moment, chance, the pace, and a
/// journal. Whoever changes anything writes a line, which is also how the service knows that there is something to
/// save.
struct Turn {
    Moment now;
    /// How many times faster than in life things happen.
    double speed = 1;
    Random& random;
    std::vector<LogLine>& journal;

    /// The moment `span` from now, at the world's pace.
    Moment in(Span span) const { return now + Span(static_cast<Span::rep>(static_cast<double>(span.count()) / speed)); }
    /// A moment between `least` and `most` from now, at the world's pace.
    Moment within(Span least, Span most) { return in(Span(random.between(least.count(), most.count()))); }

    void debug(std::string_view subject, std::string text) { add(Level::debug, subject, std::move(text)); }
    void info(std::string_view subject, std::string text) { add(Level::info, subject, std::move(text)); }
    void warn(std::string_view subject, std::string text) { add(Level::warn, subject, std::move(text)); }
    void error(std::string_view subject, std::string text) { add(Level::error, subject, std::move(text)); }

private:
    void add(Level level, std::string_view subject, std::string text) {
        journal.push_back({level, "tunedeck::" + std::string(subject), std::move(text)});
    }
};

/// True when `due` is set and has come.
inline bool isDue(const std::optional<Moment>& due, Moment now) {
    return due && *due <= now;
}

/// The earlier of two moments that may be missing.
inline std::optional<Moment> earlier(std::optional<Moment> a, std::optional<Moment> b) {
    if (!a || !b) {
        return a ? a : b;
    }
    return std::min(*a, *b);
}

} // namespace tunedeck::demo
