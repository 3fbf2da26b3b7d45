#include "TunedeckMenu/Actions/LibraryActions.h"

#include "TunedeckCore/Support/Text/Text.h"

#include <algorithm>

namespace tunedeck {

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
        .message = QStringLiteral("Restore your Rekordbox library to v%1?").arg(backup.version),
        .informativeText =
            QStringLiteral("This puts back the backup") +
            (date ? QStringLiteral(" from ") + dateAndTime(*date) : QString()) + QStringLiteral(": “") + backup.reason +
            QStringLiteral("”.\n\nYour current library is backed up first, so you can undo this from the "
                           "same list. Keep Rekordbox closed until it finishes."),
        .confirmButton = QStringLiteral("Restore"),
        .cancelButton = QStringLiteral("Cancel"),
        .warning = true,
    };
}

void LibraryActions::applyNow() {
    spawn(runOnce(&LibraryClient::applyNow, &LibraryActions::m_applying));
}

void LibraryActions::retryFailed() {
    spawn(runOnce(&LibraryClient::retryFailed, &LibraryActions::m_retrying));
}

void LibraryActions::dismissFailed() {
    spawn(runOnce(&LibraryClient::dismissFailed, &LibraryActions::m_dismissing));
}

void LibraryActions::restoreBackup(const QString& version) {
    const auto* present = library(m_model);
    const auto* backup = present == nullptr ? nullptr : backupOf(*present, version);
    if (backup == nullptr || !m_services.confirm) {
        return;
    }
    m_services.confirm(restoreQuestion(*backup), [this, version, stop = m_scope.token()](bool confirmed) {
        if (confirmed && !stop.stop_requested()) {
            restoreConfirmed(version);
        }
    });
}

void LibraryActions::restoreConfirmed(const QString& version) {
    // A service that isn't there says so itself; one that is may have moved on while the question stood.
    if (m_model.state().service.isRunning()) {
        const auto* present = library(m_model);
        if (present != nullptr && present->rekordboxRunning) {
            m_model.show(QStringLiteral("Quit Rekordbox to restore a backup."));
            return;
        }
        if (present == nullptr || backupOf(*present, version) == nullptr) {
            m_model.show(QStringLiteral("The backup v%1 isn't there any more.").arg(version));
            return;
        }
    }
    spawn(run(m_services.library.restore(version, m_scope.token())));
}

QCoro::Task<> LibraryActions::runOnce(Operation operation, bool LibraryActions::* underWay) {
    if (this->*underWay) {
        co_return;
    }
    const auto stop = m_scope.token();
    this->*underWay = true;
    co_await run((m_services.library.*operation)(stop));
    if (!stop.stop_requested()) {
        this->*underWay = false;
    }
}

QCoro::Task<> LibraryActions::run(QCoro::Task<LibraryClient::Reply> request) {
    const auto stop = m_scope.token();
    m_model.libraryWork(+1);
    m_model.clearError();
    const auto reply = co_await request;
    if (stop.stop_requested()) {
        co_return;
    }
    if (!reply.ok) {
        m_model.show(reply.error.value_or(QStringLiteral("That didn't work.")));
    }
    co_await m_model.refresh(stop);
    if (!stop.stop_requested()) {
        m_model.libraryWork(-1);
    }
}

} // namespace tunedeck
