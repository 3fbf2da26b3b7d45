#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"

#include <QCoroTask>
#include <QString>

namespace tunedeck {

/// Copies values for the user and marks the copied one in the panel for a moment.
class Clipboard {
public:
    Clipboard(MenuModel& model, const MenuServices& services) : m_model(model), m_services(services) {}

    /// Puts the text on the clipboard; for 1.5 seconds the panel marks the value with that key as copied.
    void copy(const QString& text, const QString& key);

private:
    QCoro::Task<> unmark(QString key);

    MenuModel& m_model;
    const MenuServices& m_services;
    TaskScope m_scope;
};

} // namespace tunedeck
