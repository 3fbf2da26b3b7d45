#pragma once

#include "TunedeckCore/OnboardingStep.h"
#include "TunedeckCore/RekordboxInstall.h"
#include "TunedeckCore/Service/AssistantLink.h"
#include "TunedeckCore/Service/Assistants.h"
#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/Toolbox.h"

#include <QString>

#include <optional>
#include <variant>

namespace tunedeck {

/// The first backup of the library.
struct Baseline {
    struct Waiting {
        bool operator==(const Waiting&) const = default;
    };
    struct Working {
        bool operator==(const Working&) const = default;
    };
    struct Done {
        QString version; ///< of the library
        bool operator==(const Done&) const = default;
    };
    struct Later {
        QString reason; ///< why it was postponed
        bool operator==(const Later&) const = default;
    };

    std::variant<Waiting, Working, Done, Later> value = Waiting{}; ///< Waiting: not requested yet
    bool operator==(const Baseline&) const = default;
};

/// The state that the first-run window shows.
struct OnboardingState {
    OnboardingStep step = OnboardingStep::tools;
    std::optional<ToolboxReport> toolbox;
    std::optional<ServiceStatus> status;
    std::optional<RekordboxInstall> rekordbox;
    Baseline baseline;
    std::optional<Assistant> assistant; ///< chosen by the user
    std::optional<AssistantLink> link;  ///< of the chosen assistant
    bool connecting = false;
    bool renewing = false; ///< a new pairing code was requested
    std::optional<QString> error;
    bool copied = false;    ///< the URL was copied a moment ago
    bool keyCopied = false; ///< the same for the Shortcut's key
    bool operator==(const OnboardingState&) const = default;
};

} // namespace tunedeck
