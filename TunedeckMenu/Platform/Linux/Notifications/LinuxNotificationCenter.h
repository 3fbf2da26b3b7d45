#pragma once

#include "TunedeckMenu/Platform/NotificationCenter.h"
#include "TunedeckMenu/Platform/UserNotification.h"

#include <QByteArray>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QStringList>

#include <deque>
#include <map>
#include <memory>
#include <optional>

namespace tunedeck {

class SessionBus;

/// Posts through org.freedesktop.Notifications, one call at a time and in order. The server's capabilities and ids are
/// discarded when it exits. While a server doesn't reply, a limited number of notifications is queued.
class LinuxNotificationCenter final : public NotificationCenter {
    Q_OBJECT
public:
    /// The application's name, the id of its desktop entry, and a path or name of an icon.
    struct Identity {
        QString name;
        QString desktopEntry;
        QString icon;
    };

    LinuxNotificationCenter(SessionBus& bus, Identity identity, QObject* parent = nullptr);

    void start() override;
    void post(const UserNotification& notification) override;

private Q_SLOTS:
    void onClosed(const QDBusMessage& message);
    void onAction(const QDBusMessage& message);
    void onToken(const QDBusMessage& message);

private:
    void subscribe();
    void resetServer();
    void processQueue();
    void requestCapabilities(bool startServer);
    void setCapabilities(const QDBusMessage& reply);
    void send(const UserNotification& notification);
    [[nodiscard]] QDBusMessage notifyCall(const UserNotification& notification) const;
    [[nodiscard]] bool isFromServer(const QDBusMessage& message) const;

    SessionBus& m_bus;
    Identity m_identity;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    std::deque<UserNotification> m_queue;
    bool m_calling = false;
    std::optional<QStringList> m_capabilities;
    bool m_areCapabilitiesAssumed = false; ///< the server didn't report them in time: none but markup
    QString m_server;                      ///< unique bus name, from its last reply
    QString m_owner;                       ///< unique bus name, from the last change of the service's owner
    quint64 m_serverGeneration = 0;        ///< counts servers, to ignore the replies of earlier ones
    std::map<quint32, QString> m_shown;    ///< identifiers by the server's ids
    std::pair<quint32, QByteArray> m_token;
};

} // namespace tunedeck
