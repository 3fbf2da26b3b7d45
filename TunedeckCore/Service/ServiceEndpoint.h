#pragma once

#include <QString>
#include <QUrl>

/// Where the service listens.
namespace tunedeck::ServiceEndpoint {

/// `~/.tunedeck/runtime.json`, written by the service.
const QString& runtimeFile();

/// "http://127.0.0.1:8000", used if the runtime file has no valid port.
const QUrl& defaultBase();

/// Reads the runtime file and returns the service's base URL; on any error defaultBase().
QUrl base(const QString& runtimeFile);

} // namespace tunedeck::ServiceEndpoint
