#pragma once

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace tunedeck {

/// Reports SIGTERM, SIGINT and SIGHUP on the event loop, so that the application quits cleanly. One per process.
class QuitSignals : public QObject {
    Q_OBJECT
public:
    /// From now on these signals no longer end the process.
    explicit QuitSignals(QObject* parent = nullptr);
    ~QuitSignals() override;

    /// Starts reporting, including signals received since the construction. Needs a QCoreApplication.
    void listen();

Q_SIGNALS:
    void received();

private:
    FileDescriptor m_read;
    FileDescriptor m_write;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tunedeck
