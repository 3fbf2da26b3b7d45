#include "TunedeckMenu/Platform/Linux/Instance/LinuxReopenListener.h"

#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"
#include "TunedeckMenu/Platform/Linux/Instance/ActivationToken.h"

namespace tunedeck {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto applicationId = u"com.brightfold.tunedeck.menu"_s;
const auto objectPath = u"/com/brightfold/tunedeck/menu"_s; // the id with slashes, as the standard requires

} // namespace

LinuxReopenListener::LinuxReopenListener(SessionBus& bus, QObject* parent) : m_bus(bus) {
    setParent(parent);
}

void LinuxReopenListener::start() {
    connect(&m_bus, &SessionBus::reconnected, this, &LinuxReopenListener::publish);
    publish();
    endActivation(); // the start may have shown no window
}

void LinuxReopenListener::publish() {
    auto bus = m_bus.connection();
    bus.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);
    // Not registerService(), which blocks.
    auto call = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                               u"org.freedesktop.DBus"_s, u"RequestName"_s);
    call.setArguments({applicationId, 0U});
    m_bus.call(call, 20s, this, [](const QDBusMessage&) {});
}

void LinuxReopenListener::Activate(const QVariantMap& platformData) {
    const auto token = platformData.value(u"activation-token"_s, platformData.value(u"desktop-startup-id"_s));
    useActivationToken(token.toString().toUtf8());
    Q_EMIT reopenRequested();
    endActivation();
}

void LinuxReopenListener::Open(const QStringList& /*urls*/, const QVariantMap& platformData) {
    Activate(platformData);
}

void LinuxReopenListener::ActivateAction(const QString& /*action*/, const QVariantList& /*parameter*/,
                                         const QVariantMap& platformData) {
    Activate(platformData);
}

ReopenReply requestReopen(std::chrono::milliseconds timeout) {
    const auto name = u"tunedeck-start"_s;
    if (!SessionBus::hasAddress()) {
        return ReopenReply::NoBus;
    }
    const auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    auto reply = ReopenReply::NoBus;
    if (bus.isConnected()) {
        auto call =
            QDBusMessage::createMethodCall(applicationId, objectPath, u"org.freedesktop.Application"_s, u"Activate"_s);
        const auto token = QString::fromUtf8(ownActivationToken());
        call.setArguments({token.isEmpty()
                               ? QVariantMap()
                               : QVariantMap{{u"activation-token"_s, token}, {u"desktop-startup-id"_s, token}}});
        call.setAutoStartService(false); // the bus would start this program once more
        const auto answer = bus.call(call, QDBus::Block, static_cast<int>(timeout.count()));
        reply = answer.type() == QDBusMessage::ReplyMessage ? ReopenReply::Accepted : ReopenReply::None;
    }
    QDBusConnection::disconnectFromBus(name);
    return reply;
}

} // namespace tunedeck
