#pragma once

#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Service/Watchers/JobEvent.h"
#include "TunedeckCore/Service/Watchers/JobWatcher.h"
#include "TunedeckCore/Service/Watchers/LibraryWatcher.h"
#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckMenu/Platform/NotificationCenter.h"

#include <QObject>
#include <QString>

#include <functional>

namespace tunedeck {

/// Compares successive statuses of the service, posts a notification about each download and library update, and logs
/// it to a file.
class Notifier : public QObject {
    Q_OBJECT
public:
    /// `auditLog`: path of the log file.
    Notifier(NotificationCenter& center, Clock& clock, QString auditLog, QObject* parent = nullptr);

    /// Called when the user opens a notification.
    std::function<void()> onOpen;

    void start();
    /// Posts what changed since the last call. The first status is the baseline.
    void update(const ServiceStatus& status);
    /// A repeated event replaces the earlier notification of its kind.
    void post(const JobEvent& event);
    void postLibrary(const ServiceStatus::Library::Applied& applied);

private:
    void audit(const QString& kind, const QString& identifier, const QString& label);

    NotificationCenter& m_center;
    Clock& m_clock;
    QString m_auditLog;
    JobWatcher m_jobs;
    LibraryWatcher m_library;
};

} // namespace tunedeck
