#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuModel.h"

#include <QCoroTask>
#include <QString>

namespace tunedeck {

/// What the user can have done to the Rekordbox library. A refusal becomes the error line; success speaks for itself in
/// what the panel shows.
class LibraryActions {
public:
    LibraryActions(MenuModel& model, const MenuServices& services) : m_model(model), m_services(services) {}

    void applyNow();
    void retryFailed();
    void dismissFailed();
    /// Asks first. Nothing is sent when the backup has gone, or Rekordbox was opened, by the time of the answer.
    void restoreBackup(const QString& version);

private:
    /// What the buttons without a question ask for.
    using Operation = QCoro::Task<LibraryClient::Reply> (LibraryClient::*)(std::stop_token) const;
    void restoreConfirmed(const QString& version);
    QCoro::Task<> run(QCoro::Task<LibraryClient::Reply> request);
    /// Does nothing while the same is under way, as after a double press.
    QCoro::Task<> runOnce(Operation operation, bool LibraryActions::* underWay);

    MenuModel& m_model;
    const MenuServices& m_services;
    bool m_applying = false;
    bool m_retrying = false;
    bool m_dismissing = false;
    TaskScope m_scope;
};

/// The question before a restore.
Confirmation restoreQuestion(const ServiceStatus::Library::Backup& backup);

} // namespace tunedeck
