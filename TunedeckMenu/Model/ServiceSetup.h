#pragma once

#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Support/Async/TaskScope.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <optional>

namespace tunedeck {

/// Installs and starts the background service, and knows how the last attempt ended.
class ServiceSetup : public QObject {
    Q_OBJECT
public:
    explicit ServiceSetup(ServiceInstaller installer);

    /// Makes an attempt; ends at once when another one is under way.
    QCoro::Task<> attempt();

    [[nodiscard]] bool isBusy() const { return m_isBusy; }
    /// How the last attempt ended; nothing before the first has.
    [[nodiscard]] const std::optional<ServiceInstaller::Outcome>& outcome() const { return m_outcome; }
    /// Why the last attempt failed, as a sentence; empty if it didn't.
    [[nodiscard]] QString failure() const;

Q_SIGNALS:
    /// An attempt has begun or ended.
    void changed();

private:
    ServiceInstaller m_installer;
    bool m_isBusy = false;
    std::optional<ServiceInstaller::Outcome> m_outcome;
    TaskScope m_scope;
};

} // namespace tunedeck
