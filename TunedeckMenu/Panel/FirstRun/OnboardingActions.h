#pragma once

#include <QObject>
#include <QString>

namespace tunedeck {

/// The actions behind the controls of the first-run window; QML calls the invokable ones.
class OnboardingActions : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    virtual void windowAppeared() = 0;
    virtual void windowClosed() = 0;

    /// Go to the next step, which ends the first run after the last one, or to the previous step.
    Q_INVOKABLE virtual void advance() = 0;
    Q_INVOKABLE virtual void back() = 0;
    /// Tries again to install and start the service.
    Q_INVOKABLE virtual void startService() = 0;
    Q_INVOKABLE virtual void openLog() = 0;
    Q_INVOKABLE virtual void repairTools() = 0;
    Q_INVOKABLE virtual void takeBaseline() = 0;
    /// Connects an assistant. `kind`: its raw value.
    Q_INVOKABLE virtual void choose(const QString& kind) = 0;
    Q_INVOKABLE virtual void copyLink() = 0;
    Q_INVOKABLE virtual void copyKey() = 0;
    Q_INVOKABLE virtual void openTelegram() = 0;
    Q_INVOKABLE virtual void newTelegramCode() = 0;
    Q_INVOKABLE virtual void openSetupGuide() = 0;
};

} // namespace tunedeck
