#pragma once

#include "TunedeckMenu/Panel/PanelActions.h"

#include <QObject>
#include <QQmlEngine>
#include <QtQml/qqmlregistration.h>

namespace tunedeck {

/// What was pressed, handed on to the application; as in PanelActions.
class ActionBridge : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Actions)
    QML_SINGLETON
public:
    /// Belongs to `engine`, whose windows press it.
    ActionBridge(PanelActions& actions, QQmlEngine& engine) : QObject(&engine), m_actions(actions) {
        QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    }
    /// The one of that engine.
    static ActionBridge* create(QQmlEngine* engine, QJSEngine*) {
        return engine->findChild<ActionBridge*>(QString(), Qt::FindDirectChildrenOnly);
    }

    Q_INVOKABLE void restartService() { m_actions.restartService(); }
    Q_INVOKABLE void repairTools() { m_actions.repairTools(); }
    Q_INVOKABLE void openLog() { m_actions.openLog(); }
    Q_INVOKABLE void quit() { m_actions.quit(); }
    Q_INVOKABLE void setOpensAtLogin(bool on) { m_actions.setOpensAtLogin(on); }
    Q_INVOKABLE void chooseFolder() { m_actions.chooseFolder(); }
    Q_INVOKABLE void useDefaultFolder() { m_actions.useDefaultFolder(); }
    Q_INVOKABLE void revealDownloads() { m_actions.revealDownloads(); }
    Q_INVOKABLE void revealXML() { m_actions.revealXML(); }
    Q_INVOKABLE void applyLibraryNow() { m_actions.applyLibraryNow(); }
    Q_INVOKABLE void retryFailedChanges() { m_actions.retryFailedChanges(); }
    Q_INVOKABLE void dismissFailedChanges() { m_actions.dismissFailedChanges(); }
    Q_INVOKABLE void restoreBackup(const QString& version) { m_actions.restoreBackup(version); }
    Q_INVOKABLE void toggleRevealSecrets() { m_actions.toggleRevealSecrets(); }
    Q_INVOKABLE void copySecret(const QString& key) { m_actions.copySecret(key); }
    Q_INVOKABLE void connectAssistant(const QString& kind) { m_actions.connectAssistant(kind); }
    Q_INVOKABLE void rotateLink(const QString& id) { m_actions.rotateLink(id); }
    Q_INVOKABLE void newTelegramCode(const QString& id) { m_actions.newTelegramCode(id); }
    Q_INVOKABLE void disconnectLink(const QString& id) { m_actions.disconnectLink(id); }
    Q_INVOKABLE void openSetupGuide(const QString& id) { m_actions.openSetupGuide(id); }
    Q_INVOKABLE void openTelegram(const QString& id) { m_actions.openTelegram(id); }
    Q_INVOKABLE void checkForUpdates() { m_actions.checkForUpdates(); }
    Q_INVOKABLE void installUpdate() { m_actions.installUpdate(); }
    Q_INVOKABLE void copyDiagnostics() { m_actions.copyDiagnostics(); }

private:
    PanelActions& m_actions;
};

} // namespace tunedeck
