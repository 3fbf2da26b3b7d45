#pragma once

#include "TunedeckCore/Installation/Removal.h"
#include "TunedeckCore/Installation/ServiceRemover.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <functional>

namespace tunedeck {

/// What this system needs to take Tunedeck away from the user's account. Needs no display, session bus or platform.
struct Uninstall {
    ServiceRemover::Supervisor supervisor;
    std::function<Removal()> removeLoginItem;
};

/// The means of the system that this was built for.
Uninstall uninstallOf(const SystemFacts& facts);

/// Lets a shell that was given no session (by su, cron or a bare ssh) reach that of the user, if there is one: what
/// runs in it is to be ended.
void joinSession();

} // namespace tunedeck
