#pragma once

#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace tunedeck {

/// Turns SIGTERM, SIGINT and SIGHUP into a signal on the event loop, so that the application ends in order. One for a
/// process.
class QuitSignals : public QObject {
    Q_OBJECT
public:
    /// From now on these signals don't end the process by themselves.
    explicit QuitSignals(QObject* parent = nullptr);
    ~QuitSignals() override;

    /// Begins to report, also what came since the construction; needs the event loop.
    void listen();

Q_SIGNALS:
    void received();

private:
    FileDescriptor m_read;
    FileDescriptor m_write;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tunedeck
