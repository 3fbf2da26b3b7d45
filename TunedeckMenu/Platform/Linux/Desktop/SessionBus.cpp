#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"

#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QFile>

#include <algorithm>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds firstRetryDelay = 200ms;
constexpr int maxDoublings = 8; // 51 s

} // namespace

SessionBus::SessionBus(QDBusConnection first, QObject* parent) : QObject(parent), m_connection(std::move(first)) {
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &SessionBus::reconnect);
    if (m_connection.isConnected()) {
        watchConnection();
    } else {
        onDisconnected();
    }
}

SessionBus::~SessionBus() {
    if (!m_name.isEmpty()) {
        QDBusConnection::disconnectFromBus(m_name);
    }
}

bool SessionBus::hasAddress() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s);
}

void SessionBus::call(const QDBusMessage& message, std::chrono::milliseconds timeout, QObject* context,
                      std::function<void(const QDBusMessage& reply)> done) const {
    if (!m_connection.isConnected()) {
        // A pending call of a closed connection never finishes.
        QMetaObject::invokeMethod(
            context,
            [done = std::move(done)] {
                done(QDBusMessage::createError(QDBusError::Disconnected, u"There is no session bus."_s));
            },
            Qt::QueuedConnection);
        return;
    }
    auto* watcher =
        new QDBusPendingCallWatcher(m_connection.asyncCall(message, static_cast<int>(timeout.count())), context);
    connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, done = std::move(done)] {
        watcher->deleteLater();
        done(watcher->reply());
    });
}

void SessionBus::watchConnection() {
    m_connection.connect(QString(), u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s,
                         u"Disconnected"_s, this, SLOT(onDisconnected()));
}

void SessionBus::onDisconnected() {
    m_attempts = 0;
    m_retry.start(firstRetryDelay);
    Q_EMIT lost();
}

void SessionBus::reconnect() {
    if (hasAddress()) {
        if (!m_name.isEmpty()) {
            QDBusConnection::disconnectFromBus(m_name);
        }
        m_name = u"tunedeck-%1-%2"_s.arg(reinterpret_cast<quintptr>(this)).arg(m_attempts);
        m_connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name);
    }
    if (m_connection.isConnected()) {
        watchConnection();
        Q_EMIT reconnected();
    } else {
        m_retry.start(firstRetryDelay * (1 << std::min(++m_attempts, maxDoublings)));
    }
}

} // namespace tunedeck
