#include "TunedeckMenu/Platform/Linux/Notifications/LinuxNotificationCenter.h"

#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"
#include "TunedeckMenu/Platform/Linux/Instance/ActivationToken.h"

#include <algorithm>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto service = "org.freedesktop.Notifications";
constexpr auto path = "/org/freedesktop/Notifications";
constexpr auto replyTimeout = 5s;
constexpr std::size_t maxQueued = 64; // while the server doesn't reply
constexpr std::size_t maxShown = 512; // in case the server never reports closed ones

QString text(const char* latin) {
    return QString::fromLatin1(latin);
}

QDBusMessage methodCall(const char* method) {
    return QDBusMessage::createMethodCall(text(service), text(path), text(service), text(method));
}

/// True when no server is running and none can be started.
bool isServerMissing(const QString& error) {
    return error.endsWith(u"ServiceUnknown") || error.endsWith(u"NameHasNoOwner") || error.endsWith(u"Disconnected") ||
           error.contains(u".Spawn.");
}

/// Escapes a body for a server that renders markup.
QString escaped(QString body) {
    return body.replace(u'&', u"&amp;"_s).replace(u'<', u"&lt;"_s).replace(u'>', u"&gt;"_s);
}

} // namespace

LinuxNotificationCenter::LinuxNotificationCenter(SessionBus& bus, Identity identity, QObject* parent)
    : m_bus(bus), m_identity(std::move(identity)) {
    setParent(parent);
}

void LinuxNotificationCenter::start() {
    connect(&m_bus, &SessionBus::lost, this, &LinuxNotificationCenter::resetServer);
    connect(&m_bus, &SessionBus::reconnected, this, &LinuxNotificationCenter::subscribe);
    subscribe();
    requestCapabilities(false);
}

void LinuxNotificationCenter::post(const UserNotification& notification) {
    m_queue.push_back(notification);
    if (m_queue.size() > maxQueued) {
        m_queue.pop_front();
    }
    processQueue();
}

void LinuxNotificationCenter::subscribe() {
    auto bus = m_bus.connection();
    m_watcher = std::make_unique<QDBusServiceWatcher>(text(service), bus, QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& oldOwner, const QString& newOwner) {
                m_owner = newOwner;
                // The new owner may have replied before this signal arrived; in that case we already know it.
                if (newOwner != m_server || oldOwner == m_server) {
                    resetServer();
                }
            });
    bus.connect(QString(), text(path), text(service), u"NotificationClosed"_s, this, SLOT(onClosed(QDBusMessage)));
    bus.connect(QString(), text(path), text(service), u"ActionInvoked"_s, this, SLOT(onAction(QDBusMessage)));
    bus.connect(QString(), text(path), text(service), u"ActivationToken"_s, this, SLOT(onToken(QDBusMessage)));
}

void LinuxNotificationCenter::resetServer() {
    ++m_serverGeneration;
    m_server.clear();
    m_capabilities.reset();
    m_shown.clear();
    m_token = {};
}

void LinuxNotificationCenter::processQueue() {
    if (m_calling) {
        return;
    }
    if (m_queue.empty()) {
        if (std::exchange(m_areCapabilitiesAssumed, false)) {
            m_capabilities.reset(); // request them again for the next notification
        }
        return;
    }
    if (!m_capabilities) {
        requestCapabilities(true);
        return;
    }
    const auto next = std::move(m_queue.front());
    m_queue.pop_front();
    send(next);
}

void LinuxNotificationCenter::requestCapabilities(bool startServer) {
    auto call = methodCall("GetCapabilities");
    call.setAutoStartService(startServer);
    m_calling = true;
    m_bus.call(call, replyTimeout, this,
               [this, startServer, generation = m_serverGeneration](const QDBusMessage& reply) {
                   m_calling = false;
                   const bool hasReplied = reply.type() != QDBusMessage::ErrorMessage;
                   // A server that was started by this call is the owner; an earlier server no longer is.
                   if (generation == m_serverGeneration || (hasReplied && reply.service() == m_owner)) {
                       if (hasReplied) {
                           setCapabilities(reply);
                       } else if (startServer && isServerMissing(reply.errorName())) {
                           m_queue.clear(); // nothing can show them
                       } else if (startServer) {
                           m_capabilities = QStringList(); // the server hangs: assume that it only renders markup
                           m_areCapabilitiesAssumed = true;
                       }
                   }
                   processQueue();
               });
}

void LinuxNotificationCenter::setCapabilities(const QDBusMessage& reply) {
    m_capabilities = reply.arguments().value(0).toStringList();
    m_areCapabilitiesAssumed = false;
    m_server = reply.service();
}

void LinuxNotificationCenter::send(const UserNotification& notification) {
    m_calling = true;
    m_bus.call(
        notifyCall(notification), replyTimeout, this,
        [this, identifier = notification.identifier, generation = m_serverGeneration](const QDBusMessage& reply) {
            m_calling = false;
            const auto number = reply.arguments().value(0).toUInt();
            if (reply.type() != QDBusMessage::ErrorMessage && generation == m_serverGeneration) {
                m_server = reply.service();
                std::erase_if(m_shown, [&identifier](const auto& shown) { return shown.second == identifier; });
                m_shown[number] = identifier;
                if (m_shown.size() > maxShown) {
                    m_shown.erase(m_shown.begin());
                }
            }
            processQueue();
        });
}

QDBusMessage LinuxNotificationCenter::notifyCall(const UserNotification& notification) const {
    const auto replaced =
        std::ranges::find_if(m_shown, [&](const auto& shown) { return shown.second == notification.identifier; });
    const auto hasCapability = [this](const char* capability) { return m_capabilities->contains(text(capability)); };
    const bool rendersMarkup = m_areCapabilitiesAssumed || hasCapability("body-markup");
    QStringList actions;
    if (hasCapability("actions")) {
        actions = {u"default"_s, u"Open Tunedeck"_s};
    }
    const QVariantMap hints{{u"desktop-entry"_s, m_identity.desktopEntry},
                            {u"category"_s, u"transfer"_s},
                            {u"sound-name"_s, u"message-new-instant"_s},
                            {u"urgency"_s, QVariant::fromValue(uchar(1))}};
    auto call = methodCall("Notify");
    call.setArguments({m_identity.name, replaced == m_shown.end() ? quint32(0) : replaced->first, m_identity.icon,
                       notification.title, rendersMarkup ? escaped(notification.body) : notification.body, actions,
                       hints, -1});
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
    if (!isFromServer(message) || shown == m_shown.end() || message.arguments().value(1).toString() != u"default"_s) {
        return;
    }
    if (m_token.first == shown->first) {
        useActivationToken(m_token.second);
    }
    const auto identifier = shown->second;
    Q_EMIT opened(identifier);
    endActivation();
}

} // namespace tunedeck
