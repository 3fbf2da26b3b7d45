#pragma once

#include "TunedeckCore/Installation/Removal.h"
#include "TunedeckCore/Installation/ServiceRemover.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <functional>

namespace tunedeck {

/// How this system removes Tunedeck from the user's account. Needs no display and no session bus.
struct Uninstall {
    ServiceRemover::Supervisor supervisor;
    std::function<Removal()> removeLoginItem;
};

Uninstall uninstallOf(const SystemFacts& facts);

/// Sets XDG_RUNTIME_DIR when it is missing (under su, cron or ssh) and the user has a session, so that commands reach
/// what runs in that session.
void joinSession();

} // namespace tunedeck
