#include "TunedeckMenu/Actions/FolderActions.h"

#include <QUrl>

namespace tunedeck {

void FolderActions::choose() {
    if (m_choosing) {
        return;
    }
    m_choosing = true;
    const auto* status = m_model.state().service.status();
    const auto start =
        m_services.settings.downloadDir().value_or(status != nullptr ? status->downloadDir : m_services.facts.home);
    auto chosen = [this, stop = m_scope.token()](const std::optional<QString>& folder) {
        if (stop.stop_requested()) {
            return;
        }
        m_choosing = false;
        if (folder) {
            save(folder);
        }
    };
    m_services.folderPicker.choose(QStringLiteral("Choose where Tunedeck saves downloads"),
                                   QStringLiteral("Use This Folder"), start, std::move(chosen));
}

void FolderActions::useDefault() {
    save(std::nullopt);
}

void FolderActions::save(const std::optional<QString>& folder) {
    if (const auto saved = m_services.settings.setDownloadDir(folder); saved) {
        m_model.clearError();
    } else {
        m_model.show(QStringLiteral("Couldn't save the folder: ") + saved.error());
    }
    spawn(m_model.refresh(m_scope.token()));
}

void FolderActions::revealDownloads() {
    const auto* status = m_model.state().service.status();
    const auto folder = m_services.settings.downloadDir().value_or(status != nullptr ? status->downloadDir : QString());
    if (!folder.isEmpty() && !m_services.workspace.open(QUrl::fromLocalFile(folder))) {
        m_model.show(QStringLiteral("Couldn't open %1.").arg(folder));
    }
}

void FolderActions::revealXML() {
    if (const auto* status = m_model.state().service.status()) {
        m_services.workspace.reveal(status->importXml);
    }
}

} // namespace tunedeck
