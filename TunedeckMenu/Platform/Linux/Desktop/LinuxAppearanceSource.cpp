#include "TunedeckMenu/Platform/Linux/Desktop/LinuxAppearanceSource.h"

#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QMap>
#include <QPalette>

namespace tunedeck {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto portal = u"org.freedesktop.portal.Desktop"_s;
const auto portalPath = u"/org/freedesktop/portal/desktop"_s;
const auto settings = u"org.freedesktop.portal.Settings"_s;
const auto appearanceGroup = u"org.freedesktop.appearance"_s;
const auto gnomeGroup = u"org.gnome.desktop.interface"_s;
const auto kdeGroup = u"org.kde.kdeglobals.KDE"_s;

constexpr uint preferDark = 1;
constexpr uint preferLight = 2;

} // namespace

LinuxAppearanceSource::LinuxAppearanceSource(SessionBus& bus, QObject* parent) : m_bus(bus) {
    setParent(parent);
    connect(&m_bus, &SessionBus::reconnected, this, &LinuxAppearanceSource::subscribe);
    QCoreApplication::instance()->installEventFilter(this);
    m_notified = current();
    QMetaObject::invokeMethod(this, &LinuxAppearanceSource::subscribe, Qt::QueuedConnection);
}

LinuxAppearanceSource::~LinuxAppearanceSource() = default;

Appearance LinuxAppearanceSource::current() const {
    const bool isPaletteDark = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
    return {.dark = m_settings.dark.value_or(isPaletteDark),
            .reduceMotion = m_settings.reducedMotion || m_settings.animationsOff || m_settings.noDuration,
            .moreContrast = m_settings.moreContrast};
}

void LinuxAppearanceSource::subscribe() {
    auto bus = m_bus.connection();
    m_watcher = std::make_unique<QDBusServiceWatcher>(portal, bus, QDBusServiceWatcher::WatchForRegistration);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceRegistered, this, &LinuxAppearanceSource::requestSettings);
    bus.connect(QString(), portalPath, settings, u"SettingChanged"_s, this, SLOT(onSettingChanged(QDBusMessage)));
    requestSettings();
}

void LinuxAppearanceSource::requestSettings() {
    auto call = QDBusMessage::createMethodCall(portal, portalPath, settings, u"ReadAll"_s);
    call.setArguments({QStringList{appearanceGroup, gnomeGroup, kdeGroup}});
    m_bus.call(call, 20s, this, [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage || reply.signature() != u"a{sa{sv}}") {
            return;
        }
        const auto groups = qdbus_cast<QMap<QString, QVariantMap>>(reply.arguments().constFirst());
        for (auto group = groups.begin(); group != groups.end(); ++group) {
            for (auto setting = group->begin(); setting != group->end(); ++setting) {
                apply(group.key(), setting.key(), setting.value());
            }
        }
        notifyIfChanged();
    });
}

void LinuxAppearanceSource::onSettingChanged(const QDBusMessage& message) {
    if (message.signature() == u"ssv") {
        const auto arguments = message.arguments();
        apply(arguments[0].toString(), arguments[1].toString(), arguments[2].value<QDBusVariant>().variant());
        notifyIfChanged();
    }
}

void LinuxAppearanceSource::apply(const QString& group, const QString& key, const QVariant& value) {
    if (group == appearanceGroup && key == u"color-scheme") {
        const auto scheme = value.toUInt();
        m_settings.dark =
            scheme == preferDark || scheme == preferLight ? std::optional(scheme == preferDark) : std::nullopt;
    } else if (group == appearanceGroup && key == u"reduced-motion") {
        m_settings.reducedMotion = value.toUInt() == 1;
    } else if (group == appearanceGroup && key == u"contrast") {
        m_settings.moreContrast = value.toUInt() == 1;
    } else if (group == gnomeGroup && key == u"enable-animations") {
        m_settings.animationsOff = !value.toBool();
    } else if (group == kdeGroup && key == u"AnimationDurationFactor") {
        bool isNumber = false;
        m_settings.noDuration = value.toString().toDouble(&isNumber) <= 0 && isNumber;
    }
}

void LinuxAppearanceSource::notifyIfChanged() {
    const auto now = current();
    if (now != m_notified) {
        m_notified = now;
        Q_EMIT changed();
    }
}

bool LinuxAppearanceSource::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange) {
        QMetaObject::invokeMethod(this, &LinuxAppearanceSource::notifyIfChanged, Qt::QueuedConnection);
    }
    return AppearanceSource::eventFilter(watched, event);
}

} // namespace tunedeck
