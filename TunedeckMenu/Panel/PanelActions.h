#pragma once

#include <QObject>
#include <QString>

namespace tunedeck {

/// What the panel's controls request, one signal per action: QML emits it by calling it like a function, and the action
/// connects to it. No action blocks; each reports its outcome by changing what the panel shows.
class PanelActions : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

Q_SIGNALS:
    /// Emitted once per window that shows the panel. The service is polled while at least one is visible.
    void panelAppeared();
    void panelDisappeared();

    void restartService();
    void repairTools();
    void openLog();
    void quit();
    void setOpensAtLogin(bool on);
    /// Opens the guide's page about desktops.
    void openDesktopGuide();
    /// Hides the card about a missing tray, also after the next start.
    void dismissMissingTray();

    void chooseFolder();
    void useDefaultFolder();
    void revealDownloads();
    void revealXML();

    void applyLibraryNow();
    void retryFailedChanges();
    void dismissFailedChanges();
    void restoreBackup(const QString& version);

    void toggleRevealSecrets();
    /// `key`: as in SecretFieldView.
    void copySecret(const QString& key);
    /// `kind`: the assistant's raw value.
    void connectAssistant(const QString& kind);
    void rotateLink(const QString& id);
    void newTelegramCode(const QString& id);
    void disconnectLink(const QString& id);
    void openSetupGuide(const QString& id);
    /// Opens a Telegram link's start URL.
    void openTelegram(const QString& id);

    void checkForUpdates();
    void installUpdate();
    void copyDiagnostics();
};

} // namespace tunedeck
