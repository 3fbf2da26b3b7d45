#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"

#include <QString>

#include <optional>

namespace tunedeck {

/// What the user can do about where songs are saved.
class FolderActions {
public:
    FolderActions(MenuModel& model, const MenuServices& services) : m_model(model), m_services(services) {}

    /// Lets the user pick the download folder.
    void choose();
    /// Goes back to the service's own folder.
    void useDefault();
    /// Opens the download folder.
    void revealDownloads();
    /// Shows the Rekordbox import file in the file manager.
    void revealXML();

private:
    void save(const std::optional<QString>& folder);

    MenuModel& m_model;
    const MenuServices& m_services;
    bool m_choosing = false;
    TaskScope m_scope;
};

} // namespace tunedeck
