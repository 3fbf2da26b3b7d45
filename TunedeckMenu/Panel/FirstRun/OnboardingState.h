#pragma once

#include "TunedeckCore/OnboardingStep.h"
#include "TunedeckCore/RekordboxInstall.h"
#include "TunedeckCore/Service/AssistantLink.h"
#include "TunedeckCore/Service/Assistants.h"
#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/Toolbox.h"

#include <QDateTime>
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

/// What the first-run window is waiting for.
enum class OnboardingWait { Nothing, Service, Tools, Backup, Link };

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
    bool renewing = false;                 ///< a new pairing code was requested
    bool isStartingService = false;        ///< an attempt is under way
    QString serviceFailure;                ///< why the service couldn't be started; empty if it could
    QString serviceAdvice;                 ///< what the user can do about that, if known
    std::optional<QDateTime> waitingSince; ///< start of the current wait
    std::optional<QString> error;
    bool copied = false;    ///< the URL was copied a moment ago
    bool keyCopied = false; ///< the same for the Shortcut's key

    [[nodiscard]] OnboardingWait wait() const;
    bool operator==(const OnboardingState&) const = default;
};

} // namespace tunedeck
