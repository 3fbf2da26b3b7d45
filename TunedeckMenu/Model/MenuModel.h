#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/ActionFeedback.h"
#include "TunedeckMenu/Model/InFlight.h"
#include "TunedeckMenu/Model/MenuServices.h"
#include "TunedeckMenu/Model/RequestSequence.h"
#include "TunedeckMenu/Panel/PanelState.h"

#include <QCoroTask>
#include <QDateTime>
#include <QObject>
#include <QString>

#include <optional>
#include <stop_token>
#include <utility>
#include <vector>

namespace tunedeck {

/// Owns what the panel shows. Updated by its own requests and by the actions; setting an equal value notifies nobody.
/// Callers that await its coroutines must be destroyed first.
class MenuModel : public QObject, public ActionFeedback {
    Q_OBJECT
public:
    /// When to send a request for the links.
    enum class LinksFetch { IfStale, Always };
    /// Who asked for an update check.
    enum class CheckTrigger { Timer, User };

    /// The services must outlive the model.
    explicit MenuModel(const MenuServices& services, QObject* parent = nullptr);
    ~MenuModel() override;

    [[nodiscard]] const PanelState& state() const { return m_state; }

    /// Counts the windows that show the panel. While there is one, the model refreshes at once and again 3 seconds
    /// after each refresh.
    void panelAppeared();
    void panelDisappeared();

    /// Fetches the status, then the tool report of a running service. Ends without waiting for the links, which may
    /// take 30 seconds. Stale replies are dropped.
    QCoro::Task<> refresh(std::stop_token stop);
    /// Fetches the links if the service reaches the cloud. They are stale after 15 seconds, 3 while a pairing is
    /// pending. A failure keeps the old links.
    QCoro::Task<> refreshLinks(LinksFetch fetch, std::stop_token stop);
    /// Fetches the tool report; a failure clears it.
    QCoro::Task<> refreshToolbox(std::stop_token stop);

    /// Checks for a newer version, unless a check or an installation is under way. Checks by timer run at most every
    /// 20 hours and fail silently.
    void checkForUpdates(CheckTrigger trigger);

    /// Whether a Telegram link is waiting to be paired with a code that hasn't expired.
    [[nodiscard]] bool pairingTelegram() const;
    /// The link with that id, or null.
    [[nodiscard]] const AssistantLink* link(const QString& id) const;

    void showError(QString error) override;
    void showNote(QString note) override;
    /// Removes the current note when this link is removed or used for the first time.
    void keepNoteWith(const AssistantLink& link);
    void clearError() override;
    /// Clears this error, whose cause is gone, if it is still shown.
    void withdrawError(const QString& error);
    void setCopied(std::optional<QString> key) override;

    void setService(ServiceState service);
    void setMenuBarIcon(MenuBarIconVisibility visibility);
    void setMissingTray(MissingTray missing);
    void setRevealSecrets(bool reveal);
    void setUpdate(UpdateState update);
    /// The panel shows the library, the links or the restart as busy while a guard lives.
    [[nodiscard]] InFlight::Guard beginLibraryWork() { return m_libraryWork.begin(); }
    [[nodiscard]] InFlight::Guard beginLinksWork() { return m_linksWork.begin(); }
    [[nodiscard]] InFlight::Guard beginRestart() { return m_restarts.begin(); }
    /// Adds or replaces a link that the service has just created or renewed. Lists requested earlier become stale.
    void storeLink(AssistantLink link);
    /// Removes a link that the service has just deleted. Lists requested earlier become stale.
    void removeLink(const QString& id);
    /// Reads the settings file and the login item again.
    void readSettings();

Q_SIGNALS:
    /// Something that the panel shows has changed.
    void changed();
    /// The service's state has changed; emitted before changed().
    void serviceChanged();
    /// A refresh has ended, with or without changes; relative times may read differently now.
    void refreshed();

private:
    void setLinks(std::vector<AssistantLink> links);
    QCoro::Task<> poll();
    QCoro::Task<> runUpdateCheck(CheckTrigger trigger);
    template<class T>
    void set(T& field, T value) {
        if (field == value) {
            return;
        }
        field = std::move(value);
        Q_EMIT changed();
    }

    const MenuServices& m_services;
    PanelState m_state;
    std::optional<AssistantLink> m_noteLink; ///< the link that the note is about, as it was then
    RequestSequence m_statusRequests;
    RequestSequence m_toolboxRequests;
    RequestSequence m_linksRequests;
    std::optional<QDateTime> m_linksFetchedAt;
    std::optional<QDateTime> m_lastUpdateCheck;
    InFlight m_linksInFlight;
    InFlight m_libraryWork{[this](bool busy) { set(m_state.libraryBusy, busy); }};
    InFlight m_linksWork{[this](bool busy) { set(m_state.linksBusy, busy); }};
    InFlight m_restarts{[this](bool busy) { set(m_state.isRestarting, busy); }};
    int m_panels = 0;
    TaskScope m_polling;
    TaskScope m_scope;
};

} // namespace tunedeck
