#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Panel/PanelActions.h"

#include <QCoroTask>
#include <QObject>

namespace tunedeck {

/// Checks for updates and installs them.
class UpdateActions : public QObject {
public:
    UpdateActions(PanelActions& panel, MenuModel& model, const MenuServices& services);

private:
    void installUpdate();
    /// Installs the release and relaunches. Where the application's folder isn't writable, opens the disk image's URL.
    QCoro::Task<> install(Release release);
    void openDiskImage(const Release& release);

    MenuModel& m_model;
    const MenuServices& m_services;
    TaskScope m_scope;
};

} // namespace tunedeck
