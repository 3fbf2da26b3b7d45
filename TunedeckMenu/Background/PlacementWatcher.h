#pragma once

#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Platform/StatusItem.h"

#include <QCoroTask>
#include <QString>

namespace tunedeck {

/// Measures where the icon is shown, updates the model and writes the measurement to a file.
class PlacementWatcher {
public:
    PlacementWatcher(MenuModel& model, StatusItem& item, Clock& clock, QString recordPath);

    void check();
    /// Checks in one second, when the desktop has settled. Another call restarts the delay.
    void checkSoon();

private:
    QCoro::Task<> checkLater();

    MenuModel& m_model;
    StatusItem& m_item;
    Clock& m_clock;
    QString m_recordPath;
    TaskScope m_scope;
};

} // namespace tunedeck
