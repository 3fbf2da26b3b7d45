#pragma once

#include <QLoggingCategory>

namespace tunedeck {

/// The application's one logger: subsystem "com.brightfold.tunedeck.menu", category "app".
const QLoggingCategory& appLog();

/// Sends the logger to the system's log.
void installSystemLog();

} // namespace tunedeck
