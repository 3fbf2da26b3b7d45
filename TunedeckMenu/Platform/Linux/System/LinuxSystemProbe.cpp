#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Async/Background.h"
#include "TunedeckCore/Support/Async/Wait.h"
#include "TunedeckMenu/Platform/Linux/Desktop/LinuxLoginItem.h"
#include "TunedeckMenu/Platform/Linux/Desktop/SessionBus.h"
#include "TunedeckMenu/Platform/Linux/Service/SystemdUserManager.h"
#include "TunedeckMenu/Platform/Linux/System/LinuxProcesses.h"
#include "TunedeckMenu/Platform/Linux/Tray/X11Window.h"
#include "TunedeckMenu/Platform/SingleInstance.h"
#include "TunedeckMenu/Platform/SystemProbe.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QLockFile>

#include <atomic>
#include <memory>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

struct DeleteLater {
    void operator()(QObject* object) const { object->deleteLater(); }
};

/// Connects to the session bus, which blocks while the bus doesn't respond.
QDBusConnection connectToBus(const std::stop_token& /*stop*/) {
    static std::atomic<int> count = 0;
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"tunedeck-probe-%1"_s.arg(++count));
}

/// The reply or an error; nothing if there is no session bus. Each question has its own connection, so that none waits
/// for another.
QCoro::Task<std::optional<QDBusMessage>> ask(QDBusMessage question, std::stop_token stop) {
    const std::function<QDBusConnection(std::stop_token)> connect = connectToBus;
    const auto bus = SessionBus::hasAddress() ? co_await inBackground(connect, stop) : std::nullopt;
    if (!bus || !bus->isConnected()) {
        co_return std::nullopt;
    }
    Wait wait(stop);
    const std::unique_ptr<QDBusPendingCallWatcher, DeleteLater> watcher(
        new QDBusPendingCallWatcher(bus->asyncCall(question)));
    QObject::connect(watcher.get(), &QDBusPendingCallWatcher::finished, [&wait] { wait.wake(); });
    co_await wait.next();
    QDBusConnection::disconnectFromBus(bus->name());
    co_return watcher->isFinished() ? std::optional(watcher->reply()) : std::nullopt;
}

bool isReply(const QDBusMessage& message) {
    return message.type() == QDBusMessage::ReplyMessage;
}

/// Whether one of the tray's items ("BUS-NAME/PATH" or "BUS-NAME") belongs to the process.
QCoro::Task<bool> hasItemOf(QStringList items, qint64 process, std::stop_token stop) {
    const auto daemon = u"org.freedesktop.DBus"_s;
    for (const auto& item : items) {
        auto question =
            QDBusMessage::createMethodCall(daemon, u"/org/freedesktop/DBus"_s, daemon, u"GetConnectionUnixProcessID"_s);
        question << item.section(u'/', 0, 0);
        const auto reply = co_await ask(question, stop);
        if (reply && reply->arguments().value(0).toLongLong() == process) {
            co_return true;
        }
    }
    co_return false;
}

QCoro::Task<std::optional<TrayFacts>> tray(qint64 process, std::stop_token stop) {
    const auto watcher = u"org.kde.StatusNotifierWatcher"_s;
    auto question = QDBusMessage::createMethodCall(watcher, u"/StatusNotifierWatcher"_s,
                                                   u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s);
    question << watcher;
    question.setAutoStartService(false);
    const auto reply = co_await ask(question, stop);
    const auto properties = reply ? qdbus_cast<QVariantMap>(reply->arguments().value(0)) : QVariantMap();
    if (properties.value(u"IsStatusNotifierHostRegistered"_s).toBool()) {
        const auto items = properties.value(u"RegisteredStatusNotifierItems"_s).toStringList();
        const bool isShown = co_await hasItemOf(items, process, stop);
        co_return TrayFacts{.exists = true, .showsIcon = isShown};
    }
    const std::function<bool(std::stop_token)> askX11 = [](const std::stop_token&) { return hasX11Tray(); };
    const auto hasTray = co_await inBackground(askX11, stop);
    co_return reply || hasTray.value_or(false) ? std::optional(TrayFacts{.exists = hasTray.value_or(false)})
                                               : std::nullopt;
}

QCoro::Task<std::optional<NotificationFacts>> notifications(std::stop_token stop) {
    const auto service = u"org.freedesktop.Notifications"_s;
    const auto question =
        QDBusMessage::createMethodCall(service, u"/org/freedesktop/Notifications"_s, service, u"GetCapabilities"_s);
    const auto reply = co_await ask(question, stop);
    if (!reply) {
        co_return std::nullopt;
    }
    co_return NotificationFacts{.exists = isReply(*reply),
                                .capabilities = reply->arguments().value(0).toStringList(),
                                .advice = u"Install a notification program, such as dunst."_s};
}

QCoro::Task<std::optional<bool>> settings(std::stop_token stop) {
    auto question =
        QDBusMessage::createMethodCall(u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
                                       u"org.freedesktop.portal.Settings"_s, u"ReadAll"_s);
    question << QStringList(u"org.freedesktop.appearance"_s);
    const auto reply = co_await ask(question, stop);
    co_return reply ? std::optional(isReply(*reply)) : std::nullopt;
}

std::optional<RunningInstance> runningInstance(const QString& application) {
    const QFileInfo lock(SingleInstance::defaultLockPath());
    qint64 process = 0;
    QString host;
    QString name;
    if (!QLockFile(lock.filePath()).getLockInfo(&process, &host, &name)) {
        return std::nullopt;
    }
    const auto program = QFile::decodeName(ownProgramPath(static_cast<pid_t>(process)));
    if (QFileInfo(program).fileName() != QFileInfo(application).fileName()) {
        return std::nullopt; // left behind by a process that was killed
    }
    return RunningInstance{.process = process,
                           .program = program,
                           .isOnDisk = runsFile(QByteArray::number(process), program),
                           .since = lock.lastModified()};
}

LoginItemState loginItem(const SystemFacts& facts) {
    const auto path = LinuxLoginItem::defaultEntryPath(facts.home);
    if (LinuxLoginItem(path, BundlePaths(facts.bundle).application(), {}).isEnabled()) {
        return LoginItemState::On;
    }
    return QFileInfo::exists(path) ? LoginItemState::Broken : LoginItemState::Off;
}

} // namespace

SystemProbe systemProbe(const SystemFacts& facts) {
    const auto manager = SystemdUserManager::ofUser();
    const auto label = QString::fromLatin1(ServiceInstaller::label);
    return {
        .service = [manager, label](std::stop_token stop) { return manager.state(label, std::move(stop)); },
        .outdatedServiceFile = [manager,
                                label](const PropertyDictionary& plist) { return manager.outdatedUnit(label, plist); },
        .instance = [application = BundlePaths(facts.bundle).application()] { return runningInstance(application); },
        .tray = tray,
        .notifications = notifications,
        .settings = settings,
        .loginItem = [facts] { return loginItem(facts); }};
}

} // namespace tunedeck
