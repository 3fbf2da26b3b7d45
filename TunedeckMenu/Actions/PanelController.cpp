#include "TunedeckMenu/Actions/PanelController.h"

#include "TunedeckMenu/Actions/DiagnosticsAction.h"
#include "TunedeckMenu/Actions/LoginAction.h"

namespace tunedeck {

PanelController::PanelController(MenuModel& model, const MenuServices& services)
    : m_model(model)
    , m_services(services)
    , m_clipboard(model, services)
    , m_service(model, services)
    , m_folder(model, services)
    , m_library(model, services)
    , m_links(model, services, m_clipboard)
    , m_update(model, services) {}

void PanelController::panelAppeared() {
    m_model.panelAppeared();
}

void PanelController::panelDisappeared() {
    m_model.panelDisappeared();
}

void PanelController::restartService() {
    m_service.restart();
}

void PanelController::repairTools() {
    m_service.repairTools();
}

void PanelController::openLog() {
    m_service.openLog();
}

void PanelController::quit() {
    m_services.quit();
}

void PanelController::setOpensAtLogin(bool on) {
    tunedeck::setOpensAtLogin(m_model, m_services.loginItem, on);
}

void PanelController::chooseFolder() {
    m_folder.choose();
}

void PanelController::useDefaultFolder() {
    m_folder.useDefault();
}

void PanelController::revealDownloads() {
    m_folder.revealDownloads();
}

void PanelController::revealXML() {
    m_folder.revealXML();
}

void PanelController::applyLibraryNow() {
    m_library.applyNow();
}

void PanelController::retryFailedChanges() {
    m_library.retryFailed();
}

void PanelController::dismissFailedChanges() {
    m_library.dismissFailed();
}

void PanelController::restoreBackup(const QString& version) {
    m_library.restoreBackup(version);
}

void PanelController::toggleRevealSecrets() {
    m_model.setRevealSecrets(!m_model.state().revealSecrets);
}

void PanelController::copySecret(const QString& key) {
    m_links.copySecret(key);
}

void PanelController::connectAssistant(const QString& kind) {
    if (const auto assistant = assistantFromRawValue(kind)) {
        m_links.connectAssistant(*assistant);
    }
}

void PanelController::rotateLink(const QString& id) {
    m_links.rotate(id);
}

void PanelController::newTelegramCode(const QString& id) {
    m_links.newTelegramCode(id);
}

void PanelController::disconnectLink(const QString& id) {
    m_links.disconnect(id);
}

void PanelController::openSetupGuide(const QString& id) {
    m_links.openSetupGuide(id);
}

void PanelController::openTelegram(const QString& id) {
    m_links.openTelegram(id);
}

void PanelController::checkForUpdates() {
    m_model.checkForUpdates(true);
}

void PanelController::installUpdate() {
    m_update.installUpdate();
}

void PanelController::copyDiagnostics() {
    tunedeck::copyDiagnostics(m_model, m_services);
}

} // namespace tunedeck
