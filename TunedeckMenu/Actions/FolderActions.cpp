#include "TunedeckMenu/Actions/FolderActions.h"

#include "TunedeckMenu/Actions/Openers.h"

#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

FolderActions::FolderActions(PanelActions& panel, MenuModel& model, const MenuServices& services)
    : m_model(model), m_services(services) {
    connect(&panel, &PanelActions::chooseFolder, this, &FolderActions::choose);
    connect(&panel, &PanelActions::useDefaultFolder, this, [this] { save(std::nullopt); });
    connect(&panel, &PanelActions::revealDownloads, this, &FolderActions::revealDownloads);
    connect(&panel, &PanelActions::revealXML, this, &FolderActions::revealXML);
}

void FolderActions::choose() {
    const auto* status = m_model.state().service.status();
    const auto start =
        m_services.settings.downloadDir().value_or(status != nullptr ? status->downloadDir : m_services.facts.home);
    auto chosen = [this, stop = m_scope.token()](const std::optional<QString>& folder) {
        if (folder && !stop.stop_requested()) {
            save(folder);
        }
    };
    m_services.folderPicker.choose(u"Choose where Tunedeck saves downloads"_s, u"Use This Folder"_s, start,
                                   std::move(chosen));
}

void FolderActions::save(const std::optional<QString>& folder) {
    if (const auto saved = m_services.settings.setDownloadDir(folder); saved) {
        m_model.clearError();
    } else {
        m_model.showError(u"Couldn't save the folder: "_s + saved.error());
    }
    spawn(m_model.refresh(m_scope.token()));
}

void FolderActions::revealDownloads() {
    const auto* status = m_model.state().service.status();
    const auto folder = m_services.settings.downloadDir().value_or(status != nullptr ? status->downloadDir : QString());
    if (!folder.isEmpty()) {
        openFolder(folder, m_services.workspace, m_model);
    }
}

void FolderActions::revealXML() {
    if (const auto* status = m_model.state().service.status()) {
        revealFile(status->importXml, m_services.workspace, m_model);
    }
}

} // namespace tunedeck
