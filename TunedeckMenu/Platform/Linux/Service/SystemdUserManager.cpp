#include "TunedeckMenu/Platform/Linux/Service/SystemdUserManager.h"

#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/Document.h"
#include "TunedeckMenu/Platform/Linux/Service/SystemdUnit.h"
#include "TunedeckMenu/Platform/Log.h"

#include <QFileInfo>
#include <QMap>
#include <QStandardPaths>

#include <sysexits.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

constexpr std::int32_t startFailed = -1;
// As systemctl's own "status" exits.
constexpr std::int32_t notRunning = 3;
constexpr std::int32_t noSuchUnit = 4;

/// The unit of a target such as "gui/501/com.example.service".
QString unitName(const QString& target) {
    return target.mid(target.lastIndexOf(u'/') + 1) + u".service"_s;
}

QCoro::Task<ProcessResult> systemctl(SystemdUserManager manager, QStringList arguments, std::stop_token stop) {
    const ProcessRequest request{
        .program = manager.systemctl, .arguments = QStringList(u"--user"_s) + arguments, .keepOutput = true};
    const auto result = co_await runProcess(request, stop);
    if (!result && !stop.stop_requested()) {
        qCWarning(appLog(), "%s", qUtf8Printable(result.error()));
    }
    co_return result.value_or(ProcessResult{.exitStatus = startFailed, .output = {}});
}

/// True when the unit is the one that "bootstrap" makes from this property list, and the folders of its logs exist.
bool isUpToDate(const QString& unitPath, const PropertyDictionary& plist) {
    const auto unit = systemdUnit(plist);
    return unit && readDocument(unitPath) == unit->text &&
           std::ranges::all_of(unit->folders, [](const QString& folder) { return QFileInfo(folder).isDir(); });
}

struct UnitStatus {
    std::int32_t exitStatus = 0; ///< 0 when the unit is in a wanted state, otherwise as systemctl's "status" exits
    bool needsReload = false;    ///< its files have changed since they were loaded
};

QCoro::Task<UnitStatus> unitStatus(SystemdUserManager manager, QString unit, QByteArrayList wantedStates,
                                   std::stop_token stop) {
    const QStringList arguments{u"show"_s, u"--property=LoadState,ActiveState,NeedDaemonReload"_s, unit};
    const auto result = co_await systemctl(manager, arguments, stop);
    if (result.exitStatus != 0) {
        co_return UnitStatus{result.exitStatus};
    }
    const auto lines = result.output.split('\n');
    if (!lines.contains("LoadState=loaded")) {
        co_return UnitStatus{noSuchUnit};
    }
    const bool isWanted = std::ranges::any_of(
        wantedStates, [&lines](const QByteArray& state) { return lines.contains("ActiveState=" + state); });
    co_return UnitStatus{isWanted ? 0 : notRunning, lines.contains("NeedDaemonReload=yes")};
}

QCoro::Task<std::int32_t> print(SystemdUserManager manager, QString unit, std::stop_token stop) {
    // "activating" includes the wait for a restart.
    const QByteArrayList loaded{"active", "activating", "reloading", "maintenance"};
    const auto status = co_await unitStatus(manager, unit, loaded, stop);
    if (status.exitStatus != 0 || manager.agentFolder.isEmpty()) {
        co_return status.exitStatus;
    }
    const auto label = QFileInfo(unit).completeBaseName();
    const auto bytes = readDocument(manager.agentFolder + u'/' + label + u".plist"_s);
    const auto plist = bytes ? parsePropertyList(*bytes) : std::nullopt;
    const bool isOutdated = status.needsReload || (plist && !isUpToDate(manager.unitFolder + u'/' + unit, *plist));
    co_return isOutdated ? EX_CONFIG : 0;
}

QCoro::Task<std::int32_t> runSystemctl(SystemdUserManager manager, QStringList arguments, std::stop_token stop) {
    const auto result = co_await systemctl(manager, arguments, stop);
    co_return result.exitStatus;
}

/// Starts the unit at once, even while it waits for its restart, where systemctl's "start" would wait as well.
QCoro::Task<std::int32_t> start(SystemdUserManager manager, QString unit, std::stop_token stop) {
    const QByteArrayList running{"active"};
    const auto status = co_await unitStatus(manager, unit, running, stop);
    if (status.exitStatus == 0 || stop.stop_requested()) {
        co_return status.exitStatus;
    }
    const QStringList arguments{u"restart"_s, unit};
    co_return co_await runSystemctl(manager, arguments, stop);
}

/// Writes the unit's file unless it is up to date.
std::int32_t writeUnit(const SystemdUserManager& manager, const QString& name, const QString& plistPath) {
    const auto bytes = readDocument(plistPath);
    const auto plist = bytes ? parsePropertyList(*bytes) : std::nullopt;
    if (!plist) {
        qCWarning(appLog(), "%s can't be read as a property list", qUtf8Printable(plistPath));
        return EX_NOINPUT;
    }
    const auto unit = systemdUnit(*plist);
    if (!unit) {
        qCWarning(appLog(), "%s", qUtf8Printable(unit.error()));
        return EX_CANTCREAT;
    }
    for (const auto& folder : QStringList(manager.unitFolder) + unit->folders) {
        if (const auto made = createFolder(folder); !made) {
            qCWarning(appLog(), "%s", qUtf8Printable(made.error()));
            return EX_CANTCREAT;
        }
    }
    const auto path = manager.unitFolder + u'/' + name;
    if (readDocument(path) == unit->text) {
        return 0;
    }
    if (const auto written = writeFileAtomically(path, unit->text); !written) {
        qCWarning(appLog(), "%s", qUtf8Printable(written.error()));
        return EX_CANTCREAT;
    }
    return 0;
}

/// The unit of the service that this property list belongs to.
QString unitNameOfPlist(const QString& path) {
    const auto file = path.mid(path.lastIndexOf(u'/') + 1);
    return file.left(file.lastIndexOf(u'.')) + u".service"_s;
}

QCoro::Task<std::int32_t> bootstrap(SystemdUserManager manager, QString plistPath, std::stop_token stop) {
    const auto unit = unitNameOfPlist(plistPath);
    if (const auto status = writeUnit(manager, unit, plistPath); status != 0) {
        co_return status;
    }
    // `restart`, not `start`: a unit in auto-restart must start now, with the file just written.
    const std::array<QStringList, 3> steps{{{u"daemon-reload"_s}, {u"enable"_s, unit}, {u"restart"_s, unit}}};
    for (const auto& arguments : steps) {
        const auto status = co_await runSystemctl(manager, arguments, stop);
        if (status != 0 || stop.stop_requested()) {
            co_return status;
        }
    }
    co_return 0;
}

/// How the main process of a unit ended; nothing if it didn't.
std::optional<QString> exitOf(const QMap<QByteArray, QByteArray>& properties) {
    const auto code = properties.value("ExecMainCode").toInt();
    if (code == 0) {
        return std::nullopt;
    }
    return (code == CLD_EXITED ? u"exit status "_s : u"signal "_s) +
           QString::fromLatin1(properties.value("ExecMainStatus"));
}

QCoro::Task<std::optional<SupervisedService>> stateOf(SystemdUserManager manager, QString unit, std::stop_token stop) {
    const QStringList arguments{
        u"show"_s, u"--timestamp=unix"_s,
        u"--property=LoadState,ActiveState,SubState,ActiveEnterTimestamp,ExecMainCode,ExecMainStatus,NRestarts"_s,
        unit};
    const auto result = co_await systemctl(manager, arguments, stop);
    if (result.exitStatus != 0) {
        co_return std::nullopt;
    }
    QMap<QByteArray, QByteArray> properties;
    for (const auto& line : result.output.split('\n')) {
        const auto equals = line.indexOf('=');
        properties.insert(line.left(equals), line.mid(equals + 1));
    }
    using State = SupervisedService::State;
    SupervisedService service{.lastExit = exitOf(properties), .restarts = properties.value("NRestarts").toInt()};
    if (properties.value("LoadState") == "loaded") {
        service.state = properties.value("ActiveState") == "active"      ? State::Running
                        : properties.value("SubState") == "auto-restart" ? State::Restarting
                                                                         : State::Stopped;
    }
    if (service.state == State::Running) {
        const auto start = properties.value("ActiveEnterTimestamp").mid(1).toLongLong(); // after "@"
        service.since = QDateTime::fromSecsSinceEpoch(start, Qt::UTC);
    }
    co_return service;
}

QCoro::Task<std::int32_t> usageError() {
    co_return EX_USAGE;
}

QCoro::Task<std::int32_t> run(const SystemdUserManager& manager, const QStringList& arguments, std::stop_token stop) {
    const auto operation = arguments.value(0);
    const auto count = arguments.size();
    if (operation == u"bootstrap" && count == 3) {
        return bootstrap(manager, arguments[2], std::move(stop));
    }
    const auto unit = unitName(arguments.value(count - 1));
    if (operation == u"print" && count == 2) {
        return print(manager, unit, std::move(stop));
    }
    if (operation == u"bootout" && count == 2) {
        return runSystemctl(manager, {u"disable"_s, u"--now"_s, unit}, std::move(stop));
    }
    if (operation == u"kickstart" && count == 2) {
        return start(manager, unit, std::move(stop));
    }
    if (operation == u"kickstart" && count == 3 && arguments[1] == u"-k") {
        return runSystemctl(manager, {u"restart"_s, unit}, std::move(stop));
    }
    return usageError();
}

} // namespace

SystemdUserManager SystemdUserManager::ofUser(QString agentFolder) {
    return {.unitFolder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/systemd/user"_s,
            .agentFolder = std::move(agentFolder)};
}

Launchctl SystemdUserManager::launchctl() const {
    return [manager = *this](const QStringList& arguments, std::stop_token stop) {
        return run(manager, arguments, std::move(stop));
    };
}

QCoro::Task<std::optional<SupervisedService>> SystemdUserManager::state(QString label, std::stop_token stop) const {
    return stateOf(*this, label + u".service"_s, std::move(stop));
}

std::optional<QString> SystemdUserManager::outdatedUnit(const QString& label, const PropertyDictionary& plist) const {
    const auto path = unitFolder + u'/' + label + u".service"_s;
    const auto unit = systemdUnit(plist);
    return unit && readDocument(path) == unit->text ? std::nullopt : std::optional(path);
}

} // namespace tunedeck
