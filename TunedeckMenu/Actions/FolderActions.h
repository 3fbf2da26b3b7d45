#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Panel/PanelActions.h"

#include <QObject>
#include <QString>

#include <optional>

namespace tunedeck {

/// The downloads card's actions.
class FolderActions : public QObject {
public:
    FolderActions(PanelActions& panel, MenuModel& model, const MenuServices& services);

private:
    void choose();
    /// `folder`: nothing for the service's default.
    void save(const std::optional<QString>& folder);
    void revealDownloads();
    void revealXML();

    MenuModel& m_model;
    const MenuServices& m_services;
    TaskScope m_scope;
};

} // namespace tunedeck
