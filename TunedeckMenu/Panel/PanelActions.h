#pragma once

#include <QObject>
#include <QString>

namespace tunedeck {

/// The actions behind the panel's controls; QML calls the invokable ones. None blocks: each reports its outcome by
/// changing what the panel shows.
class PanelActions : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Called once per window that shows the panel. The service is polled while at least one is visible.
    virtual void panelAppeared() = 0;
    virtual void panelDisappeared() = 0;

    Q_INVOKABLE virtual void restartService() = 0;
    Q_INVOKABLE virtual void repairTools() = 0;
    Q_INVOKABLE virtual void openLog() = 0;
    Q_INVOKABLE virtual void quit() = 0;
    Q_INVOKABLE virtual void setOpensAtLogin(bool on) = 0;

    Q_INVOKABLE virtual void chooseFolder() = 0;
    Q_INVOKABLE virtual void useDefaultFolder() = 0;
    Q_INVOKABLE virtual void revealDownloads() = 0;
    Q_INVOKABLE virtual void revealXML() = 0;

    Q_INVOKABLE virtual void applyLibraryNow() = 0;
    Q_INVOKABLE virtual void retryFailedChanges() = 0;
    Q_INVOKABLE virtual void dismissFailedChanges() = 0;
    Q_INVOKABLE virtual void restoreBackup(const QString& version) = 0;

    Q_INVOKABLE virtual void toggleRevealSecrets() = 0;
    /// `key`: as in SecretFieldView.
    Q_INVOKABLE virtual void copySecret(const QString& key) = 0;
    /// `kind`: the assistant's raw value.
    Q_INVOKABLE virtual void connectAssistant(const QString& kind) = 0;
    Q_INVOKABLE virtual void rotateLink(const QString& id) = 0;
    Q_INVOKABLE virtual void newTelegramCode(const QString& id) = 0;
    Q_INVOKABLE virtual void disconnectLink(const QString& id) = 0;
    Q_INVOKABLE virtual void openSetupGuide(const QString& id) = 0;
    /// Opens a Telegram link's start URL.
    Q_INVOKABLE virtual void openTelegram(const QString& id) = 0;

    Q_INVOKABLE virtual void checkForUpdates() = 0;
    Q_INVOKABLE virtual void installUpdate() = 0;
    Q_INVOKABLE virtual void copyDiagnostics() = 0;
};

} // namespace tunedeck
