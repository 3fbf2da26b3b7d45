#include "TunedeckMenu/Platform/Linux/Tray/TrayWatch.h"

#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"

#include <QDBusVariant>
#include <QGuiApplication>
#include <QScreen>
#include <qpa/qplatformnativeinterface.h>

namespace tunedeck {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto watcherService = u"org.kde.StatusNotifierWatcher"_s;
const auto watcherPath = u"/StatusNotifierWatcher"_s;
constexpr auto hostGrace = 6s;

QPlatformNativeInterface* xcbInterface() {
    return QGuiApplication::platformName() == u"xcb" ? QGuiApplication::platformNativeInterface() : nullptr;
}

} // namespace

TrayWatch::TrayWatch(SessionBus& bus, QObject* parent) : QObject(parent), m_bus(bus) {
    m_grace.setSingleShot(true);
    m_grace.setInterval(hostGrace);
    connect(&m_grace, &QTimer::timeout, this, &TrayWatch::update);
}

void TrayWatch::start() {
    if (auto* xcb = xcbInterface()) {
        // A signal of the platform plugin, which no header declares.
        connect(xcb, SIGNAL(systemTrayWindowChanged(QScreen*)), this, SLOT(onTrayWindow()));
    }
    connect(&m_bus, &SessionBus::reconnected, this, &TrayWatch::subscribe);
    connect(&m_bus, &SessionBus::lost, this, [this] {
        ++m_queryNumber;
        m_host = Host::NoWatcher;
        update();
    });
    subscribe();
}

quint32 TrayWatch::xembedWindow() {
    auto* xcb = xcbInterface();
    return xcb ? static_cast<quint32>(reinterpret_cast<quintptr>(
                     xcb->nativeResourceForScreen("traywindow", QGuiApplication::primaryScreen())))
               : 0;
}

void TrayWatch::subscribe() {
    auto bus = m_bus.connection();
    m_watcher = std::make_unique<QDBusServiceWatcher>(watcherService, bus, QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& oldOwner, const QString& newOwner) {
                if (!oldOwner.isEmpty() && !newOwner.isEmpty()) {
                    Q_EMIT watcherReplaced();
                }
                queryHost();
            });
    for (const auto& signal : {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s}) {
        bus.connect(QString(), watcherPath, watcherService, signal, this, SLOT(queryHost()));
    }
    queryHost();
}

void TrayWatch::queryHost() {
    auto call =
        QDBusMessage::createMethodCall(watcherService, watcherPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call.setArguments({watcherService, u"IsStatusNotifierHostRegistered"_s});
    call.setAutoStartService(false);
    m_bus.call(call, 60s, this, [this, number = ++m_queryNumber](const QDBusMessage& reply) {
        if (number != m_queryNumber) {
            return;
        }
        if (reply.type() == QDBusMessage::ErrorMessage) {
            m_host = Host::NoWatcher;
        } else if (reply.arguments().value(0).value<QDBusVariant>().variant().toBool()) {
            m_host = Host::Registered;
        } else {
            if (m_host != Host::NoHost) {
                m_grace.start();
            }
            m_host = Host::NoHost;
        }
        update();
    });
}

void TrayWatch::onTrayWindow() {
    Q_EMIT xembedChanged();
    update();
}

void TrayWatch::update() {
    auto tray = Tray::None;
    if (m_host == Host::Registered) {
        tray = Tray::StatusNotifier;
    } else if (m_host == Host::NoWatcher || (m_host == Host::NoHost && !m_grace.isActive())) {
        tray = xembedWindow() != 0 ? Tray::XEmbed : Tray::None;
    }
    if (tray != m_tray) {
        m_tray = tray;
        Q_EMIT changed();
    }
}

} // namespace tunedeck
