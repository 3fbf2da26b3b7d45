#pragma once

#include "TunedeckCore/Support/Async/TaskScope.h"
#include "TunedeckMenu/Model/MenuServices.h"
#include "TunedeckMenu/Model/RequestSequence.h"
#include "TunedeckMenu/Panel/PanelState.h"

#include <QCoroTask>
#include <QDateTime>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>
#include <utility>
#include <vector>

namespace tunedeck {

/// The one owner of what the panel shows. Setting something to an equal value notifies nobody. It changes by what it
/// fetches here and by the actions beside it; whoever awaits one of its operations must be gone before it is.
class MenuModel : public QObject {
    Q_OBJECT
public:
    /// The services must outlive the model.
    explicit MenuModel(const MenuServices& services, QObject* parent = nullptr);
    ~MenuModel() override;

    [[nodiscard]] const PanelState& state() const { return m_state; }

    /// Counts the windows that show the panel. While there is one, the model is refreshed and then again 3 seconds
    /// after each refresh.
    void panelAppeared();
    void panelDisappeared();

    /// Fetches the status, then the tool report of a running service, and sees to the links. Ends when the service's
    /// state is current; the links, which may take half a minute, follow by themselves. Answers that were overtaken
    /// by those to later questions are dropped.
    QCoro::Task<> refresh(std::stop_token stop);
    /// Fetches the links of a service that reaches the cloud, unless they are fresh and this isn't forced. A failure
    /// keeps the old ones.
    QCoro::Task<> refreshLinks(bool force, std::stop_token stop);
    /// Fetches the tool report; a failed fetch clears it.
    QCoro::Task<> refreshToolbox(std::stop_token stop);

    /// Looks for a newer version, unless that or an installation is under way; one that the user didn't ask for also
    /// only every 20 hours, and its failure is silent.
    void checkForUpdates(bool manual);

    /// Whether a Telegram link waits to be paired with a code that still works.
    [[nodiscard]] bool pairingTelegram() const;
    /// The link with that id, or null.
    [[nodiscard]] const AssistantLink* link(const QString& id) const;

    /// The one line about the last action: setting an error clears the note and the other way round.
    void show(QString error);
    void showNote(QString note);
    void clearError();

    void setService(ServiceState service);
    void setRestarting(bool restarting);
    void setMenuBarIcon(MenuBarIconVisibility visibility);
    void setCopied(std::optional<QString> key);
    void setRevealSecrets(bool reveal);
    void setUpdate(UpdateState update);
    /// Count what is under way: busy from the first begin to the last end.
    void libraryWork(int change);
    void linksWork(int change);
    /// Takes over a link that the service has made or renewed; lists asked for earlier no longer count.
    void storeLink(AssistantLink link);
    /// Takes out a link that the service has removed.
    void removeLink(const QString& id);
    /// Reads the settings file and the login item afresh.
    void readSettings();

Q_SIGNALS:
    /// Something that the panel shows is different.
    void changed();
    /// The service's state is different; comes before changed().
    void serviceChanged();
    /// A refresh came to its end, with or without changes: times in words may read differently now.
    void refreshed();

private:
    QCoro::Task<> poll();
    QCoro::Task<> askForUpdate(bool manual);
    /// Sets a field of the state and tells, if that makes a difference.
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
    RequestSequence m_statusRequests;
    RequestSequence m_toolboxRequests;
    RequestSequence m_linksRequests;
    std::optional<QDateTime> m_linksFetchedAt;
    std::optional<QDateTime> m_lastUpdateCheck;
    std::weak_ptr<void> m_linksRequest; ///< lives while a list is asked for
    int m_panels = 0;
    int m_libraryWork = 0;
    int m_linksWork = 0;
    TaskScope m_polling;
    TaskScope m_scope;
};

} // namespace tunedeck
