#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

namespace tunedeck {

/// The window system that the application should connect to.
struct WindowSystem {
    std::vector<std::pair<QByteArray, QByteArray>> environment; ///< variables that QApplication should find
    QString reason;                                             ///< for the log
};

/// Chooses the window system for this session. Needs no application object, and blocks while it looks for X11.
WindowSystem chooseWindowSystem();

/// A sentence for a user without a display that the application can use. `standard` is what it usually says.
QString missingDisplay(const QString& standard);

} // namespace tunedeck
