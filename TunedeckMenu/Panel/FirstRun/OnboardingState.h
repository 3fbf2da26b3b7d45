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

/// Where the first backup of the library stands.
struct Baseline {
    struct Waiting {
        bool operator==(const Waiting&) const = default;
    };
    struct Working {
        bool operator==(const Working&) const = default;
    };
    struct Done {
        QString version; ///< of the library that was backed up
        bool operator==(const Done&) const = default;
    };
    struct Later {
        QString reason; ///< why it couldn't be taken now
        bool operator==(const Later&) const = default;
    };

    std::variant<Waiting, Working, Done, Later> value = Waiting{}; ///< Waiting: not asked for yet
    bool operator==(const Baseline&) const = default;
};

/// Everything that the first-run window shows, as plain values.
struct OnboardingState {
    OnboardingStep step = OnboardingStep::tools;
    std::optional<ToolboxReport> toolbox;
    std::optional<ServiceStatus> status;
    std::optional<RekordboxInstall> rekordbox;
    Baseline baseline;
    std::optional<Assistant> assistant; ///< the one that the user picked
    std::optional<AssistantLink> link;  ///< made for it
    bool connecting = false;
    bool renewing = false; ///< a new pairing code is being made
    std::optional<QString> error;
    bool copied = false;    ///< the private link was copied a moment ago
    bool keyCopied = false; ///< the Shortcut's key was
    bool operator==(const OnboardingState&) const = default;
};

} // namespace tunedeck
