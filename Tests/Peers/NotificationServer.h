#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>
#include <vector>

namespace tunedeck::test {

/// A minimal notification server (org.freedesktop.Notifications) with its own connection to a bus.
class NotificationServer : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    struct Call {
        QString name;
        uint replaces = 0;
        QString icon;
        QString title;
        QString body;
        QStringList actions;
        QVariantMap hints;
        uint id = 0; ///< what the server replied
    };

    /// On the session bus, or on the bus at `address`.
    explicit NotificationServer(QStringList capabilities, const QString& address = {});
    ~NotificationServer() override;

    /// Replies to the call that was held back.
    void replyToHeldBackCall();
    /// Gives way to another server, but stays on the bus.
    void releaseName();

    std::vector<Call> calls;
    uint lastId = 0;
    bool renumbers = false; ///< whether a replacing notification gets a new id
    bool holdsBack = false; ///< whether calls get no reply for now
    std::optional<QDBusMessage> heldBack;

public Q_SLOTS:
    QStringList GetCapabilities();
    uint Notify(const QString& name, uint replaces, const QString& icon, const QString& title, const QString& body,
                const QStringList& actions, const QVariantMap& hints, int timeout);

Q_SIGNALS:
    void NotificationClosed(uint id, uint reason);
    void ActionInvoked(uint id, const QString& action);
    void ActivationToken(uint id, const QString& token);

private:
    void holdBackIfAsked();

    QStringList m_capabilities;
    QDBusConnection m_connection;
};

} // namespace tunedeck::test
