#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>

namespace tunedeck {

/// The user's session bus, also one that comes back after its daemon was started anew.
class SessionBus : public QObject {
    Q_OBJECT
public:
    /// `first`: the connection to begin with.
    explicit SessionBus(QDBusConnection first = QDBusConnection::sessionBus(), QObject* parent = nullptr);
    ~SessionBus() override;

    /// True when the environment names a bus. Without one, libdbus would start a private bus.
    static bool hasAddress();

    /// The connection as it is now; calls on one that isn't connected fail at once.
    [[nodiscard]] const QDBusConnection& connection() const { return m_connection; }

    /// Sends a call without waiting; `done` gets the reply or the error, unless the context is gone by then.
    void call(const QDBusMessage& message, std::chrono::milliseconds timeout, QObject* context,
              std::function<void(const QDBusMessage& reply)> done) const;

Q_SIGNALS:
    /// The connection is lost; every peer is gone.
    void lost();
    /// There is a new connection: what was watched and connected on the old one must be so again.
    void reconnected();

private Q_SLOTS:
    void forget();

private:
    void follow();
    void retry();

    QDBusConnection m_connection;
    QString m_name; ///< of a connection of our own; empty while it is Qt's shared one
    QTimer m_retry;
    int m_attempts = 0;
};

/// The unique bus name of the one who sent a reply or signal, or nothing for an error.
QString senderOf(const QDBusMessage& message);

} // namespace tunedeck
