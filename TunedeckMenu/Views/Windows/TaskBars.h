#pragma once

#include <QWindow>

namespace tunedeck {

/// Keeps a window out of task bars and pagers. Call it each time before the window is shown: window managers forget it.
void keepOutOfTaskBars(QWindow& window);

} // namespace tunedeck
