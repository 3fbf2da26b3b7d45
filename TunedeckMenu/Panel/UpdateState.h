#pragma once

#include "TunedeckCore/Update/Appcast.h"

#include <QDateTime>
#include <QString>

#include <optional>
#include <variant>

namespace tunedeck {

/// The progress of a check for updates or of an installation.
struct UpdateState {
    struct Idle {
        bool operator==(const Idle&) const = default;
    };
    struct Checking {
        bool operator==(const Checking&) const = default;
    };
    struct UpToDate {
        QDateTime at;
        bool operator==(const UpToDate&) const = default;
    };
    struct Available {
        Release release;
        bool operator==(const Available&) const = default;
    };
    struct Installing {
        std::optional<double> progress = {}; ///< of the download, 0 to 1; empty when unknown
        bool operator==(const Installing&) const = default;
    };
    struct Failed {
        QString message;
        bool operator==(const Failed&) const = default;
    };

    std::variant<Idle, Checking, UpToDate, Available, Installing, Failed> value = Idle{};
    bool operator==(const UpdateState&) const = default;
};

} // namespace tunedeck
