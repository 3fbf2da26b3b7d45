#pragma once

#include <QQuickWindow>

#include <functional>

namespace tunedeck {

/// Whether the window is shown and not minimized; false for null.
bool isOnScreen(const QQuickWindow* window);

/// Calls `changed` once when the window gets on the screen and once when it leaves, whatever visibilities the window
/// system reports in between.
void onPresenceChanged(QQuickWindow& window, std::function<void(bool present)> changed);

/// Shows the window in front of all others with the focus.
void bringToFront(QQuickWindow& window);

} // namespace tunedeck
