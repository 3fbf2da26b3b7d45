#pragma once

#include <QtGlobal>

#include <optional>

namespace tunedeck {

/// True when the X11 window is visible inside a window of the tray's program.
bool isShownBy(quint32 window, quint32 tray);

/// Whether symbols in the tray should be light, from its _NET_SYSTEM_TRAY_COLORS. Nothing when it isn't set.
std::optional<bool> wantsLightSymbols(quint32 tray);

/// True when the X server of the environment has a tray. Needs no application object, and blocks.
bool hasX11Tray();

} // namespace tunedeck
