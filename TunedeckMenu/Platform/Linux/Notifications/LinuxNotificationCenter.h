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

/// The desktop's notifications over org.freedesktop.Notifications, one call at a time and in order.
///
/// What a server told (capabilities, the numbers of its notifications) is forgotten when it goes; the next one is asked
/// anew. A server that doesn't answer holds up nothing but a bounded number of notifications.
class LinuxNotificationCenter final : public NotificationCenter {
    Q_OBJECT
public:
    /// Who notifies: the name that is shown, the desktop entry's identifier and an icon's path or name.
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
    void listen();
    void forgetServer();
    void advance();
    void askCapabilities(bool startServer);
    void takeCapabilities(const QDBusMessage& reply);
    void send(const UserNotification& notification);
    [[nodiscard]] QDBusMessage notifyCall(const UserNotification& notification) const;
    [[nodiscard]] bool isFromServer(const QDBusMessage& message) const;

    SessionBus& m_bus;
    Identity m_identity;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    std::deque<UserNotification> m_waiting;
    bool m_calling = false;
    std::optional<QStringList> m_capabilities;
    bool m_isGuess = false;             ///< the server didn't tell its capabilities in time
    QString m_server;                   ///< unique bus name of the one that answered
    quint64 m_serversSeen = 0;          ///< tells replies of a server that went from those of the present one
    std::map<quint32, QString> m_shown; ///< the identifiers by the server's numbers
    std::pair<quint32, QByteArray> m_token;
};

} // namespace tunedeck
