#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>

namespace tunedeck {

/// The user's session bus. Reconnects when its daemon was restarted.
class SessionBus : public QObject {
    Q_OBJECT
public:
    explicit SessionBus(QDBusConnection first = QDBusConnection::sessionBus(), QObject* parent = nullptr);
    ~SessionBus() override;

    /// True when the environment names a bus. Without one, libdbus would start a private bus.
    static bool hasAddress();

    /// The current connection.
    [[nodiscard]] const QDBusConnection& connection() const { return m_connection; }

    /// Sends a call. `done` gets the reply or the error, unless `context` has been destroyed by then.
    void call(const QDBusMessage& message, std::chrono::milliseconds timeout, QObject* context,
              std::function<void(const QDBusMessage& reply)> done) const;

Q_SIGNALS:
    /// The connection is lost, and with it every peer.
    void lost();
    /// There is a new connection. Watchers and signal connections must be set up again.
    void reconnected();

private Q_SLOTS:
    void onDisconnected();

private:
    void watchConnection();
    void reconnect();

    QDBusConnection m_connection;
    QString m_name; ///< of our connection; empty while it is Qt's shared one
    QTimer m_retry;
    int m_attempts = 0;
};

} // namespace tunedeck
