#pragma once

#include "TunedeckMenu/Actions/Clipboard.h"
#include "TunedeckMenu/Actions/FolderActions.h"
#include "TunedeckMenu/Actions/LibraryActions.h"
#include "TunedeckMenu/Actions/LinkActions.h"
#include "TunedeckMenu/Actions/ServiceActions.h"
#include "TunedeckMenu/Actions/UpdateActions.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Panel/PanelActions.h"

#include <QString>

namespace tunedeck {

/// Hands what was pressed in the panel to the action that does it. Holds no logic of its own.
class PanelController final : public PanelActions {
public:
    PanelController(MenuModel& model, const MenuServices& services);

    void panelAppeared() override;
    void panelDisappeared() override;
    void restartService() override;
    void repairTools() override;
    void openLog() override;
    void quit() override;
    void setOpensAtLogin(bool on) override;
    void chooseFolder() override;
    void useDefaultFolder() override;
    void revealDownloads() override;
    void revealXML() override;
    void applyLibraryNow() override;
    void retryFailedChanges() override;
    void dismissFailedChanges() override;
    void restoreBackup(const QString& version) override;
    void toggleRevealSecrets() override;
    void copySecret(const QString& key) override;
    void connectAssistant(const QString& kind) override;
    void rotateLink(const QString& id) override;
    void newTelegramCode(const QString& id) override;
    void disconnectLink(const QString& id) override;
    void openSetupGuide(const QString& id) override;
    void openTelegram(const QString& id) override;
    void checkForUpdates() override;
    void installUpdate() override;
    void copyDiagnostics() override;

    /// The actions that the first-run window shares with the panel.
    LinkActions& links() { return m_links; }
    ServiceActions& service() { return m_service; }
    Clipboard& clipboard() { return m_clipboard; }

private:
    MenuModel& m_model;
    const MenuServices& m_services;
    Clipboard m_clipboard;
    ServiceActions m_service;
    FolderActions m_folder;
    LibraryActions m_library;
    LinkActions m_links;
    UpdateActions m_update;
};

} // namespace tunedeck
