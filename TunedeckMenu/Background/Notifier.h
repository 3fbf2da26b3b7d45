#pragma once

#include "TunedeckCore/Service/JobEvent.h"
#include "TunedeckCore/Service/ServiceStatus.h"
#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckMenu/Platform/NotificationCenter.h"

#include <QObject>
#include <QString>

#include <functional>

namespace tunedeck {

/// Tells the user of downloads and library updates, and keeps a trail of what it posted.
class Notifier : public QObject {
    Q_OBJECT
public:
    /// `auditLog`: the file that gets a line for each notification.
    Notifier(NotificationCenter& center, Clock& clock, QString auditLog, QObject* parent = nullptr);

    /// Run when the user opens a notification.
    std::function<void()> onOpen;

    /// Gets the notification centre ready.
    void start();
    /// One notification for a job event; a repeated event replaces the earlier one of its kind.
    void post(const JobEvent& event);
    /// One notification for a library update.
    void postLibrary(const ServiceStatus::Library::Applied& applied);

private:
    void audit(const QString& kind, const QString& identifier, const QString& label);

    NotificationCenter& m_center;
    Clock& m_clock;
    QString m_auditLog;
};

/// Appends a line to a regular file, which is made when it doesn't exist. Nothing is left half written; failures are
/// ignored.
void appendLine(const QString& path, const QString& line);

} // namespace tunedeck
