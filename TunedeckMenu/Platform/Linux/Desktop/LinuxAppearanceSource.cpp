#include "TunedeckMenu/Platform/Linux/Desktop/LinuxAppearanceSource.h"

#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QMap>
#include <QPalette>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

const auto portal = QStringLiteral("org.freedesktop.portal.Desktop");
const auto portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto settings = QStringLiteral("org.freedesktop.portal.Settings");
const auto neutralGroup = QStringLiteral("org.freedesktop.appearance");
const auto gnomeGroup = QStringLiteral("org.gnome.desktop.interface");
const auto kdeGroup = QStringLiteral("org.kde.kdeglobals.KDE");

constexpr uint preferDark = 1;
constexpr uint preferLight = 2;

} // namespace

LinuxAppearanceSource::LinuxAppearanceSource(SessionBus& bus, QObject* parent) : m_bus(bus) {
    setParent(parent);
    connect(&m_bus, &SessionBus::reconnected, this, [this] {
        if (m_watcher) {
            follow();
        }
    });
    QCoreApplication::instance()->installEventFilter(this);
    m_told = current();
    QMetaObject::invokeMethod(this, &LinuxAppearanceSource::follow, Qt::QueuedConnection);
}

LinuxAppearanceSource::~LinuxAppearanceSource() = default;

Appearance LinuxAppearanceSource::current() const {
    const bool palette = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
    return {.dark = m_settings.dark.value_or(palette),
            .reduceMotion = m_settings.preferredReduced || m_settings.animationsOff || m_settings.noDuration};
}

void LinuxAppearanceSource::follow() {
    auto bus = m_bus.connection();
    m_watcher = std::make_unique<QDBusServiceWatcher>(portal, bus, QDBusServiceWatcher::WatchForRegistration);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceRegistered, this, &LinuxAppearanceSource::ask);
    bus.connect(QString(), portalPath, settings, QStringLiteral("SettingChanged"), this,
                SLOT(onSettingChanged(QDBusMessage)));
    ask();
}

void LinuxAppearanceSource::ask() {
    auto call = QDBusMessage::createMethodCall(portal, portalPath, settings, QStringLiteral("ReadAll"));
    call.setArguments({QStringList{neutralGroup, gnomeGroup, kdeGroup}});
    m_bus.call(call, 20s, this, [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage || reply.signature() != u"a{sa{sv}}") {
            return;
        }
        const auto groups = qdbus_cast<QMap<QString, QVariantMap>>(reply.arguments().constFirst());
        for (auto group = groups.begin(); group != groups.end(); ++group) {
            for (auto setting = group->begin(); setting != group->end(); ++setting) {
                take(group.key(), setting.key(), setting.value());
            }
        }
        tellChange();
    });
}

void LinuxAppearanceSource::onSettingChanged(const QDBusMessage& message) {
    if (message.signature() == u"ssv") {
        const auto arguments = message.arguments();
        take(arguments[0].toString(), arguments[1].toString(), arguments[2].value<QDBusVariant>().variant());
        tellChange();
    }
}

void LinuxAppearanceSource::take(const QString& group, const QString& key, const QVariant& value) {
    if (group == neutralGroup && key == u"color-scheme") {
        const auto scheme = value.toUInt();
        m_settings.dark =
            scheme == preferDark || scheme == preferLight ? std::optional(scheme == preferDark) : std::nullopt;
    } else if (group == neutralGroup && key == u"reduced-motion") {
        m_settings.preferredReduced = value.toUInt() == 1;
    } else if (group == gnomeGroup && key == u"enable-animations") {
        m_settings.animationsOff = !value.toBool();
    } else if (group == kdeGroup && key == u"AnimationDurationFactor") {
        bool isNumber = false;
        m_settings.noDuration = value.toString().toDouble(&isNumber) <= 0 && isNumber;
    }
}

void LinuxAppearanceSource::tellChange() {
    const auto now = current();
    if (now != m_told) {
        m_told = now;
        Q_EMIT changed();
    }
}

bool LinuxAppearanceSource::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange) {
        QMetaObject::invokeMethod(this, &LinuxAppearanceSource::tellChange, Qt::QueuedConnection);
    }
    return AppearanceSource::eventFilter(watched, event);
}

} // namespace tunedeck
