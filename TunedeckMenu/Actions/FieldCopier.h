#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/ActionFeedback.h"
#include "TunedeckMenu/Model/MenuServices.h"

#include <QCoroTask>
#include <QString>

namespace tunedeck {

/// Copies the values of fields to the clipboard, and marks the copied field for 1.5 seconds.
class FieldCopier {
public:
    FieldCopier(const MenuServices& services, ActionFeedback& feedback) : m_services(services), m_feedback(feedback) {}

    /// Copies the text and marks the field with that key.
    void copy(const QString& text, const QString& key);

private:
    QCoro::Task<> clearMark();

    const MenuServices& m_services;
    ActionFeedback& m_feedback;
    TaskScope m_scope;
};

} // namespace tunedeck
