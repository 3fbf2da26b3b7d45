#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"

#include <QCoroTask>

namespace tunedeck {

/// Installs what the update check has found.
class UpdateActions {
public:
    UpdateActions(MenuModel& model, const MenuServices& services) : m_model(model), m_services(services) {}

    /// Installs the available release and starts it in place of this process. Where the application's folder can't be
    /// written, the disk image's address is opened instead.
    void installUpdate();

private:
    QCoro::Task<> install(Release release);
    void openDiskImage(const Release& release);

    MenuModel& m_model;
    const MenuServices& m_services;
    TaskScope m_scope;
};

} // namespace tunedeck
