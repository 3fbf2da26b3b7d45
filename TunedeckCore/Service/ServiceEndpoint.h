#pragma once

#include <QString>
#include <QUrl>

/// Where the service listens; see base().
namespace tunedeck::ServiceEndpoint {

/// `~/.tunedeck/runtime.json`, which the service writes.
const QString& runtimeFile();

/// "http://127.0.0.1:8000", where the service is looked for when its file says nothing.
const QUrl& defaultBase();

/// The service's base URL by its runtime file; every problem yields defaultBase(). Read afresh at every call.
QUrl base(const QString& runtimeFile);

} // namespace tunedeck::ServiceEndpoint
