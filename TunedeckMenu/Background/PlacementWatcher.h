#pragma once

#include "TunedeckCore/Support/Async/Clock.h"
#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Platform/StatusItem.h"

#include <QCoroTask>
#include <QString>

namespace tunedeck {

/// Looks where the icon ended up, tells the model and records it.
class PlacementWatcher {
public:
    /// `record`: the file that gets the measurement.
    PlacementWatcher(MenuModel& model, StatusItem& item, Clock& clock, QString record);

    /// Looks now.
    void check();
    /// Looks in a second, when the desktop has come to rest; called again meanwhile, a second from then.
    void checkSoon();

private:
    QCoro::Task<> checkLater();

    MenuModel& m_model;
    StatusItem& m_item;
    Clock& m_clock;
    QString m_record;
    TaskScope m_scope;
};

} // namespace tunedeck
