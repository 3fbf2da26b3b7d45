#pragma once

#include <QLoggingCategory>

namespace tunedeck {

/// The application's logger: subsystem "com.brightfold.tunedeck.menu", category "app".
const QLoggingCategory& appLog();

/// Sends all log messages to the system's log.
void installSystemLog();

} // namespace tunedeck
