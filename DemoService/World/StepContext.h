#pragma once

#include "DemoService/Files/Log.h"
#include "DemoService/World/Moment.h"
#include "DemoService/World/Random.h"

#include <QLatin1StringView>
#include <QString>

#include <chrono>
#include <optional>
#include <vector>

namespace tunedeck::demo {

/// The text in typographic quotation marks.
inline QString inQuotes(const QString& text) {
    return u'“' + text + u'”';
}

/// What the parts of the world need when time passes or a client changes something. Every change adds a log line, which
/// also makes the service save the state.
struct StepContext {
    using Span = std::chrono::milliseconds;

    Moment now;
    double speed = 1; ///< how many times faster than in reality things happen
    Random& random;
    std::vector<Log::Line>& lines;

    /// The current time as clients see it.
    Moment timestamp() const { return wholeSecond(now); }
    Moment after(Span span) const { return now + std::chrono::round<Span>(span / speed); }
    Moment afterBetween(Span least, Span most) { return after(Span(random.between(least.count(), most.count()))); }
    bool isDue(std::optional<Moment> moment) const { return moment && *moment <= now; }

    void debug(QLatin1StringView part, const QString& message) { add(Log::Level::Debug, part, message); }
    void info(QLatin1StringView part, const QString& message) { add(Log::Level::Info, part, message); }
    void warn(QLatin1StringView part, const QString& message) { add(Log::Level::Warn, part, message); }
    void error(QLatin1StringView part, const QString& message) { add(Log::Level::Error, part, message); }

private:
    void add(Log::Level level, QLatin1StringView part, const QString& message) {
        lines.push_back({level, QLatin1StringView("tunedeck::") + part, message});
    }
};

} // namespace tunedeck::demo
