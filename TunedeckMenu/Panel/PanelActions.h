#pragma once

#include <QString>

namespace tunedeck {

/// What the panel's controls ask for. None waits; each ends by changing what the panel shows.
class PanelActions {
public:
    virtual ~PanelActions() = default;

    /// The panel came on the screen or left it; while it is there the service is asked every 3 seconds. Counted: each
    /// window says so for itself.
    virtual void panelAppeared() = 0;
    virtual void panelDisappeared() = 0;

    virtual void restartService() = 0;
    virtual void repairTools() = 0;
    virtual void openLog() = 0;
    virtual void quit() = 0;
    virtual void setOpensAtLogin(bool on) = 0;

    virtual void chooseFolder() = 0;
    virtual void useDefaultFolder() = 0;
    virtual void revealDownloads() = 0;
    virtual void revealXML() = 0;

    virtual void applyLibraryNow() = 0;
    virtual void retryFailedChanges() = 0;
    virtual void dismissFailedChanges() = 0;
    virtual void restoreBackup(const QString& version) = 0;

    virtual void toggleRevealSecrets() = 0;
    /// `key`: as in SecretFieldView.
    virtual void copySecret(const QString& key) = 0;
    /// `kind`: an assistant's raw value.
    virtual void connectAssistant(const QString& kind) = 0;
    virtual void rotateLink(const QString& id) = 0;
    virtual void newTelegramCode(const QString& id) = 0;
    virtual void disconnectLink(const QString& id) = 0;
    virtual void openSetupGuide(const QString& id) = 0;
    /// Opens a Telegram link's start URL.
    virtual void openTelegram(const QString& id) = 0;

    virtual void checkForUpdates() = 0;
    virtual void installUpdate() = 0;
    virtual void copyDiagnostics() = 0;
};

} // namespace tunedeck
