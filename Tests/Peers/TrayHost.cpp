#include "Tests/Peers/TrayHost.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

/// Reads a list of icons; returns the first one's pixels as alpha, red, green, blue.
QByteArray firstIcon(const QDBusArgument& icons) {
    QByteArray first;
    icons.beginArray();
    while (!icons.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray pixels;
        icons.beginStructure();
        icons >> width >> height >> pixels;
        icons.endStructure();
        first = first.isEmpty() ? pixels : first;
    }
    icons.endArray();
    return first;
}

QString toolTipTitle(const QVariantMap& properties) {
    QString iconName;
    QString title;
    QString text;
    const auto toolTip = properties.value(u"ToolTip"_s).value<QDBusArgument>();
    toolTip.beginStructure();
    toolTip >> iconName;
    firstIcon(toolTip);
    toolTip >> title >> text;
    toolTip.endStructure();
    return title;
}

/// "dark" or "light" and the number of opaque pixels of the first size.
QString iconSummary(const QVariantMap& properties) {
    const auto pixels = firstIcon(properties.value(u"IconPixmap"_s).value<QDBusArgument>());
    int opaque = 0;
    int light = 0;
    for (qsizetype i = 0; i + 3 < pixels.size(); i += 4) {
        const bool isOpaque = static_cast<uchar>(pixels[i]) > 200;
        opaque += isOpaque;
        light += isOpaque && static_cast<uchar>(pixels[i + 1]) > 127;
    }
    return (2 * light > opaque ? u"light %1"_s : u"dark %1"_s).arg(opaque);
}

} // namespace

TrayHost::TrayHost(const QString& address)
    : m_bus(address.isEmpty()
                ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, QUuid::createUuid().toString())
                : QDBusConnection::connectToBus(address, QUuid::createUuid().toString())) {
    m_bus.registerObject(u"/StatusNotifierWatcher"_s, this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                             QDBusConnection::ExportAllProperties);
    m_bus.interface()->registerService(u"org.kde.StatusNotifierWatcher"_s, QDBusConnectionInterface::QueueService);
}

TrayHost::~TrayHost() {
    QDBusConnection::disconnectFromBus(m_bus.name());
}

void TrayHost::RegisterStatusNotifierItem(const QString& /*service*/) {
    m_item = message().service();
    readItem();
}

void TrayHost::readItem() {
    auto call = QDBusMessage::createMethodCall(m_item, u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Properties"_s,
                                               u"GetAll"_s);
    call.setArguments({u"org.kde.StatusNotifierItem"_s});
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const auto properties = qdbus_cast<QVariantMap>(watcher->reply().arguments().value(0));
        reads << toolTipTitle(properties) + u' ' + iconSummary(properties);
    });
}

void TrayHost::selectMenuEntries() {
    for (int id = 9; id > 0; --id) { // Qt numbers them from the end
        auto call = QDBusMessage::createMethodCall(m_item, u"/MenuBar"_s, u"com.canonical.dbusmenu"_s, u"Event"_s);
        call.setArguments({id, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
        m_bus.asyncCall(call);
    }
}

void TrayHost::activateItem() {
    auto call = QDBusMessage::createMethodCall(m_item, u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s,
                                               u"Activate"_s);
    call.setArguments({0, 0});
    m_bus.asyncCall(call);
}

void TrayHost::setHostRegistered(bool isRegistered) {
    m_isHost = isRegistered;
    if (m_isHost) {
        Q_EMIT StatusNotifierHostRegistered();
    } else {
        Q_EMIT StatusNotifierHostUnregistered();
    }
}

} // namespace tunedeck::test
