#pragma once

#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckCore/UserDefaults.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Platform/StatusItem.h"

#include <QCoroTask>
#include <QString>

namespace tunedeck {

/// Finds out whether there is a tray and measures where the icon is shown, updates the model and writes the measurement
/// to a file.
class PlacementWatcher {
public:
    PlacementWatcher(MenuModel& model, StatusItem& item, Clock& clock, QString recordPath, UserDefaults defaults);

    void check();
    /// Checks in one second, when the desktop has settled. Another call restarts the delay.
    void checkSoon();
    /// Never again reports that the desktop has no tray.
    void dismissMissingTray();

private:
    QCoro::Task<> checkLater();

    MenuModel& m_model;
    StatusItem& m_item;
    Clock& m_clock;
    QString m_recordPath;
    UserDefaults m_defaults;
    TaskScope m_scope;
};

} // namespace tunedeck
