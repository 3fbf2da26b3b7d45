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

constexpr std::chrono::milliseconds firstRetry = 200ms;
constexpr int mostDoublings = 8; // 51 s

} // namespace

SessionBus::SessionBus(QDBusConnection first, QObject* parent) : QObject(parent), m_connection(std::move(first)) {
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &SessionBus::retry);
    if (m_connection.isConnected()) {
        follow();
    } else {
        forget();
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
        // Qt's pending call would never finish.
        QMetaObject::invokeMethod(
            context,
            [done = std::move(done)] {
                done(QDBusMessage::createError(QDBusError::Disconnected, QStringLiteral("There is no session bus.")));
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

void SessionBus::follow() {
    m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                         QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                         SLOT(forget()));
}

void SessionBus::forget() {
    m_attempts = 0;
    m_retry.start(firstRetry);
    Q_EMIT lost();
}

void SessionBus::retry() {
    if (hasAddress()) {
        if (!m_name.isEmpty()) {
            QDBusConnection::disconnectFromBus(m_name);
        }
        m_name = QStringLiteral("tunedeck-%1-%2").arg(reinterpret_cast<quintptr>(this)).arg(m_attempts);
        m_connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name);
    }
    if (m_connection.isConnected()) {
        follow();
        Q_EMIT reconnected();
    } else {
        m_retry.start(firstRetry * (1 << std::min(++m_attempts, mostDoublings)));
    }
}

QString senderOf(const QDBusMessage& message) {
    return message.type() == QDBusMessage::ErrorMessage ? QString() : message.service();
}

} // namespace tunedeck
