#pragma once

#include "TunedeckCore/Support/Json/Record.h"
#include "TunedeckCore/Support/Text/Time.h"

#include <QDateTime>
#include <QLatin1StringView>
#include <QString>

#include <algorithm>
#include <chrono>
#include <optional>

namespace tunedeck::demo {

/// A point in time in UTC. What clients see is in whole seconds.
using Moment = std::chrono::sys_time<std::chrono::milliseconds>;

inline Moment currentMoment() {
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

inline Moment wholeSecond(Moment moment) {
    return std::chrono::floor<std::chrono::seconds>(moment);
}

/// The earlier of two moments that may be missing.
inline std::optional<Moment> earlier(std::optional<Moment> a, std::optional<Moment> b) {
    return a && b ? std::min(*a, *b) : a ? a : b;
}

} // namespace tunedeck::demo

// Moments are stored in ISO 8601, with milliseconds only if they have any.
namespace tunedeck::json {

inline std::optional<Error> read(const Value& from, demo::Moment& to) {
    const auto* text = from.as<QString>();
    const auto time = text == nullptr ? std::nullopt : parseTimestamp(*text);
    if (!time) {
        return wrongType(QLatin1StringView("a time"), from);
    }
    to = demo::Moment(std::chrono::milliseconds(time->toMSecsSinceEpoch()));
    return std::nullopt;
}

inline Value encode(const demo::Moment& from, Form /*form*/) {
    const auto time = QDateTime::fromMSecsSinceEpoch(from.time_since_epoch().count(), Qt::UTC);
    return time.toString(from == demo::wholeSecond(from) ? Qt::ISODate : Qt::ISODateWithMs);
}

} // namespace tunedeck::json
