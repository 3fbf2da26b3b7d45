#pragma once

#include "TunedeckCore/Update/Appcast.h"

#include <QString>

#include <variant>

namespace tunedeck {

/// Outcome of one update check.
struct UpdateCheck {
    struct Available {
        Release release;
        bool operator==(const Available&) const = default;
    };
    struct Failed {
        QString message; ///< for the user
        bool operator==(const Failed&) const = default;
    };
    struct UpToDate {
        bool operator==(const UpToDate&) const = default;
    };

    std::variant<Available, Failed, UpToDate> value;
    bool operator==(const UpdateCheck&) const = default;
};

} // namespace tunedeck
