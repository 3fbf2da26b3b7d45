#pragma once

#include <QtGlobal>

#include <optional>

namespace tunedeck {

/// True when the X11 window is shown inside a window of the program that owns the tray's window.
bool isShownBy(quint32 window, quint32 tray);

/// Whether symbols on the tray's window are to be light, when the tray tells the colour of its own
/// (_NET_SYSTEM_TRAY_COLORS).
std::optional<bool> wantsLightSymbols(quint32 tray);

} // namespace tunedeck
