#include "TunedeckMenu/Actions/LibraryActions.h"

#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/ShownText.h"

#include <algorithm>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

using Backup = ServiceStatus::Library::Backup;

const ServiceStatus::Library* library(const MenuModel& model) {
    const auto* status = model.state().service.status();
    return status != nullptr && status->rekordboxDb ? &*status->rekordboxDb : nullptr;
}

const Backup* backupOf(const ServiceStatus::Library& library, const QString& version) {
    const auto found = std::ranges::find(library.backups, version, &Backup::version);
    return found == library.backups.end() ? nullptr : &*found;
}

} // namespace

Confirmation restoreQuestion(const Backup& backup) {
    const auto date = backup.date();
    return {
        .message = u"Restore your Rekordbox library to v%1?"_s.arg(oneLine(backup.version)),
        .informativeText = u"This puts back the backup"_s + (date ? u" from "_s + dateAndTime(*date) : QString()) +
                           u": “"_s + oneLine(backup.reason) +
                           u"”.\n\nYour current library is backed up first, so you can undo this from the "
                           "same list. Keep Rekordbox closed until it finishes."_s,
        .confirmButton = u"Restore"_s,
        .cancelButton = u"Cancel"_s,
        .warning = true,
    };
}

LibraryActions::LibraryActions(PanelActions& panel, MenuModel& model, const MenuServices& services)
    : m_model(model), m_services(services) {
    sendOn(panel, &PanelActions::applyLibraryNow, &LibraryClient::applyNow, m_applying);
    sendOn(panel, &PanelActions::retryFailedChanges, &LibraryClient::retryFailed, m_retrying);
    sendOn(panel, &PanelActions::dismissFailedChanges, &LibraryClient::dismissFailed, m_dismissing);
    connect(&panel, &PanelActions::restoreBackup, this, &LibraryActions::restoreBackup);
}

void LibraryActions::sendOn(PanelActions& panel, void (PanelActions::*signal)(), Request request, InFlight& inFlight) {
    connect(&panel, signal, this, [this, request, &inFlight] {
        if (!inFlight.isBusy()) {
            spawn(send(request, inFlight.begin()));
        }
    });
}

QCoro::Task<> LibraryActions::send(Request request, [[maybe_unused]] InFlight::Guard guard) {
    co_await finish((m_services.library.*request)(m_scope.token()));
}

void LibraryActions::restoreBackup(const QString& version) {
    const auto* current = library(m_model);
    const auto* backup = current == nullptr ? nullptr : backupOf(*current, version);
    if (backup == nullptr) {
        return;
    }
    m_services.confirm(restoreQuestion(*backup), [this, version, stop = m_scope.token()](bool confirmed) {
        if (confirmed && !stop.stop_requested()) {
            restoreConfirmed(version);
        }
    });
}

void LibraryActions::restoreConfirmed(const QString& version) {
    // The state may have changed while the dialog was open. If the service is down, the request itself reports that.
    if (m_model.state().service.isRunning()) {
        const auto* current = library(m_model);
        if (current != nullptr && current->rekordboxRunning) {
            m_model.showError(u"Quit Rekordbox to restore a backup."_s);
            return;
        }
        if (current == nullptr || backupOf(*current, version) == nullptr) {
            m_model.showError(u"The backup v%1 isn't there any more."_s.arg(version));
            return;
        }
    }
    spawn(finish(m_services.library.restore(version, m_scope.token())));
}

QCoro::Task<> LibraryActions::finish(QCoro::Task<LibraryClient::Reply> request) {
    const auto stop = m_scope.token();
    const auto busy = m_model.beginLibraryWork();
    m_model.clearError();
    const auto reply = co_await request;
    if (stop.stop_requested()) {
        co_return;
    }
    if (!reply.ok) {
        m_model.showError(reply.error.value_or(u"That didn't work."_s));
    }
    co_await m_model.refresh(stop);
}

} // namespace tunedeck
