#include "TunedeckMenu/Platform/Linux/Notifications/LinuxNotificationCenter.h"

#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"
#include "TunedeckMenu/Platform/Linux/Instance/ActivationToken.h"

#include <algorithm>
#include <utility>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

constexpr auto service = "org.freedesktop.Notifications";
constexpr auto path = "/org/freedesktop/Notifications";
constexpr auto patience = 5s;           // for an answer of the server
constexpr std::size_t mostWaiting = 64; // while a server doesn't answer
constexpr std::size_t mostShown = 512;  // of a server that never says what it closed

QString text(const char* latin) {
    return QString::fromLatin1(latin);
}

QDBusMessage callOf(const char* method) {
    return QDBusMessage::createMethodCall(text(service), text(path), text(service), text(method));
}

// Whether the error says that there is no server and none can be started.
bool isAbsence(const QString& error) {
    return error.endsWith(u"ServiceUnknown") || error.endsWith(u"NameHasNoOwner") || error.endsWith(u"Disconnected") ||
           error.contains(u".Spawn.");
}

// Text for a server that renders markup. Only what would be markup is replaced.
QString escaped(QString body) {
    return body.replace(u'&', QStringLiteral("&amp;"))
        .replace(u'<', QStringLiteral("&lt;"))
        .replace(u'>', QStringLiteral("&gt;"));
}

} // namespace

LinuxNotificationCenter::LinuxNotificationCenter(SessionBus& bus, Identity identity, QObject* parent)
    : m_bus(bus), m_identity(std::move(identity)) {
    setParent(parent);
    connect(&m_bus, &SessionBus::lost, this, &LinuxNotificationCenter::forgetServer);
    connect(&m_bus, &SessionBus::reconnected, this, [this] {
        if (m_watcher) {
            listen();
        }
    });
}

void LinuxNotificationCenter::start() {
    if (!m_watcher) {
        listen();
        askCapabilities(false);
    }
}

void LinuxNotificationCenter::post(const UserNotification& notification) {
    if (!m_watcher) {
        listen();
    }
    m_waiting.push_back(notification);
    if (m_waiting.size() > mostWaiting) {
        m_waiting.pop_front();
    }
    advance();
}

void LinuxNotificationCenter::listen() {
    auto bus = m_bus.connection();
    m_watcher = std::make_unique<QDBusServiceWatcher>(text(service), bus, QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& oldOwner, const QString& newOwner) {
                // The owner who answered before the news of its coming is no new one.
                if (newOwner != m_server || oldOwner == m_server) {
                    forgetServer();
                }
            });
    bus.connect(QString(), text(path), text(service), QStringLiteral("NotificationClosed"), this,
                SLOT(onClosed(QDBusMessage)));
    bus.connect(QString(), text(path), text(service), QStringLiteral("ActionInvoked"), this,
                SLOT(onAction(QDBusMessage)));
    bus.connect(QString(), text(path), text(service), QStringLiteral("ActivationToken"), this,
                SLOT(onToken(QDBusMessage)));
}

void LinuxNotificationCenter::forgetServer() {
    ++m_serversSeen;
    m_server.clear();
    m_capabilities.reset();
    m_shown.clear();
    m_token = {};
}

void LinuxNotificationCenter::advance() {
    if (m_calling) {
        return;
    }
    if (m_waiting.empty()) {
        if (std::exchange(m_isGuess, false)) {
            m_capabilities.reset(); // asked anew for the next notification
        }
        return;
    }
    if (!m_capabilities) {
        askCapabilities(true);
        return;
    }
    const auto next = std::move(m_waiting.front());
    m_waiting.pop_front();
    send(next);
}

void LinuxNotificationCenter::askCapabilities(bool startServer) {
    auto call = callOf("GetCapabilities");
    call.setAutoStartService(startServer);
    m_calling = true;
    m_bus.call(call, patience, this, [this, startServer, asked = m_serversSeen](const QDBusMessage& reply) {
        m_calling = false;
        const bool isThere = reply.type() != QDBusMessage::ErrorMessage;
        if (asked == m_serversSeen || isThere) {
            if (isThere) {
                takeCapabilities(reply);
            } else if (startServer && isAbsence(reply.errorName())) {
                m_waiting.clear(); // nobody to show them
            } else if (startServer) {
                m_capabilities = QStringList(); // it hangs: plain notifications for now
                m_isGuess = true;
            }
        }
        advance();
    });
}

void LinuxNotificationCenter::takeCapabilities(const QDBusMessage& reply) {
    m_capabilities = reply.arguments().value(0).toStringList();
    m_isGuess = false;
    m_server = senderOf(reply);
}

void LinuxNotificationCenter::send(const UserNotification& notification) {
    m_calling = true;
    m_bus.call(notifyCall(notification), patience, this,
               [this, identifier = notification.identifier, asked = m_serversSeen](const QDBusMessage& reply) {
                   m_calling = false;
                   const auto number = reply.arguments().value(0).toUInt();
                   if (reply.type() != QDBusMessage::ErrorMessage && asked == m_serversSeen) {
                       m_server = senderOf(reply);
                       std::erase_if(m_shown, [&identifier](const auto& shown) { return shown.second == identifier; });
                       m_shown[number] = identifier;
                       if (m_shown.size() > mostShown) {
                           m_shown.erase(m_shown.begin());
                       }
                   }
                   advance();
               });
}

QDBusMessage LinuxNotificationCenter::notifyCall(const UserNotification& notification) const {
    const auto earlier =
        std::ranges::find_if(m_shown, [&](const auto& shown) { return shown.second == notification.identifier; });
    const auto offers = [this](const char* capability) { return m_capabilities->contains(text(capability)); };
    QStringList actions;
    if (offers("actions")) {
        actions = {QStringLiteral("default"), QStringLiteral("Open Tunedeck")};
    }
    const QVariantMap hints{{QStringLiteral("desktop-entry"), m_identity.desktopEntry},
                            {QStringLiteral("category"), QStringLiteral("transfer")},
                            {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")},
                            {QStringLiteral("urgency"), QVariant::fromValue(uchar(1))}};
    auto call = callOf("Notify");
    call.setArguments({m_identity.name, earlier == m_shown.end() ? quint32(0) : earlier->first, m_identity.icon,
                       notification.title, offers("body-markup") ? escaped(notification.body) : notification.body,
                       actions, hints, -1});
    return call;
}

bool LinuxNotificationCenter::isFromServer(const QDBusMessage& message) const {
    return !m_server.isEmpty() && message.service() == m_server;
}

void LinuxNotificationCenter::onClosed(const QDBusMessage& message) {
    if (isFromServer(message)) {
        m_shown.erase(message.arguments().value(0).toUInt());
    }
}

void LinuxNotificationCenter::onToken(const QDBusMessage& message) {
    if (isFromServer(message)) {
        m_token = {message.arguments().value(0).toUInt(), message.arguments().value(1).toString().toUtf8()};
    }
}

void LinuxNotificationCenter::onAction(const QDBusMessage& message) {
    const auto shown = m_shown.find(message.arguments().value(0).toUInt());
    if (!isFromServer(message) || shown == m_shown.end() ||
        message.arguments().value(1).toString() != QStringLiteral("default")) {
        return;
    }
    if (m_token.first == shown->first) {
        useActivationToken(m_token.second);
    }
    const auto identifier = shown->second;
    Q_EMIT opened(identifier);
}

} // namespace tunedeck
