#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/InFlight.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Panel/PanelActions.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

namespace tunedeck {

/// The actions on the Rekordbox library. A refusal is shown as an error; success shows in the panel's content.
class LibraryActions : public QObject {
public:
    LibraryActions(PanelActions& panel, MenuModel& model, const MenuServices& services);

private:
    using Request = QCoro::Task<LibraryClient::Reply> (LibraryClient::*)(std::stop_token) const;
    /// Sends the request when the signal is emitted, unless the same request is in flight.
    void sendOn(PanelActions& panel, void (PanelActions::*signal)(), Request request, InFlight& inFlight);
    QCoro::Task<> send(Request request, InFlight::Guard guard);
    void restoreBackup(const QString& version);
    void restoreConfirmed(const QString& version);
    QCoro::Task<> finish(QCoro::Task<LibraryClient::Reply> request);

    MenuModel& m_model;
    const MenuServices& m_services;
    InFlight m_applying;
    InFlight m_retrying;
    InFlight m_dismissing;
    TaskScope m_scope;
};

/// The question asked before a restore.
Confirmation restoreQuestion(const ServiceStatus::Library::Backup& backup);

} // namespace tunedeck
