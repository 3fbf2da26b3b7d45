#pragma once

#include "TunedeckMenu/Platform/WindowSystem.h"

#include <functional>

namespace tunedeck {

/// The environment variables that decide about the window system; empty when not set.
struct DisplayVariables {
    QByteArray platform;    ///< QT_QPA_PLATFORM
    QByteArray wayland;     ///< WAYLAND_DISPLAY
    QByteArray x11;         ///< DISPLAY
    QByteArray inputMethod; ///< QT_IM_MODULE
};

/// Prefers X11 also on Wayland, where an application can't place a window at its icon, and isn't notified of clicks
/// elsewhere. `reachesX11` is called only when its answer matters.
WindowSystem windowSystemFor(const DisplayVariables& variables, const std::function<bool()>& reachesX11);

} // namespace tunedeck
