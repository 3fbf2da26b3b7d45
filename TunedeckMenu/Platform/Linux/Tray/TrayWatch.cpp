#include "TunedeckMenu/Platform/Linux/Tray/TrayWatch.h"

#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"

#include <QDBusVariant>
#include <QGuiApplication>
#include <QScreen>
#include <qpa/qplatformnativeinterface.h>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

const auto watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");
constexpr auto hostGrace = 6s;

QPlatformNativeInterface* xcbInterface() {
    return QGuiApplication::platformName() == u"xcb" ? QGuiApplication::platformNativeInterface() : nullptr;
}

} // namespace

TrayWatch::TrayWatch(SessionBus& bus, QObject* parent) : QObject(parent), m_bus(bus) {
    m_grace.setSingleShot(true);
    m_grace.setInterval(hostGrace);
    connect(&m_grace, &QTimer::timeout, this, &TrayWatch::settle);
}

void TrayWatch::start() {
    if (auto* xcb = xcbInterface()) {
        // The signal is the platform plugin's own; no header declares it.
        connect(xcb, SIGNAL(systemTrayWindowChanged(QScreen*)), this, SLOT(onTrayWindow()));
    }
    connect(&m_bus, &SessionBus::reconnected, this, &TrayWatch::followBus);
    connect(&m_bus, &SessionBus::lost, this, [this] {
        ++m_question;
        m_host = Host::absent;
        settle();
    });
    followBus();
}

quint32 TrayWatch::xembedWindow() {
    auto* xcb = xcbInterface();
    return xcb ? static_cast<quint32>(reinterpret_cast<quintptr>(
                     xcb->nativeResourceForScreen("traywindow", QGuiApplication::primaryScreen())))
               : 0;
}

void TrayWatch::followBus() {
    auto bus = m_bus.connection();
    m_watcher = std::make_unique<QDBusServiceWatcher>(watcherService, bus, QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this, &TrayWatch::askHost);
    for (const auto& signal :
         {QStringLiteral("StatusNotifierHostRegistered"), QStringLiteral("StatusNotifierHostUnregistered")}) {
        bus.connect(QString(), watcherPath, watcherService, signal, this, SLOT(askHost()));
    }
    askHost();
}

void TrayWatch::askHost() {
    auto question = QDBusMessage::createMethodCall(
        watcherService, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question.setArguments({watcherService, QStringLiteral("IsStatusNotifierHostRegistered")});
    question.setAutoStartService(false);
    m_bus.call(question, 60s, this, [this, number = ++m_question](const QDBusMessage& reply) {
        if (number != m_question) {
            return;
        }
        if (reply.type() == QDBusMessage::ErrorMessage) {
            m_host = Host::absent;
        } else if (reply.arguments().value(0).value<QDBusVariant>().variant().toBool()) {
            m_host = Host::registered;
        } else {
            if (m_host != Host::missing) {
                m_grace.start();
            }
            m_host = Host::missing;
        }
        settle();
    });
}

void TrayWatch::onTrayWindow() {
    Q_EMIT xembedChanged();
    settle();
}

void TrayWatch::settle() {
    auto tray = Tray::none;
    if (m_host == Host::registered) {
        tray = Tray::statusNotifier;
    } else if (m_host == Host::absent || (m_host == Host::missing && !m_grace.isActive())) {
        tray = xembedWindow() != 0 ? Tray::xembed : Tray::none;
    }
    if (tray != m_tray) {
        m_tray = tray;
        Q_EMIT changed();
    }
}

} // namespace tunedeck
