#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckCore/Support/Async/Wait.h"
#include "TunedeckMenu/Platform/MacOS/Desktop/MacLoginItem.h"
#include "TunedeckMenu/Platform/MacOS/System/MacProcesses.h"
#include "TunedeckMenu/Platform/MacValues/LaunchctlReport.h"
#include "TunedeckMenu/Platform/SingleInstance.h"
#include "TunedeckMenu/Platform/SystemProbe.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLockFile>

#import <UserNotifications/UserNotifications.h>

#include <memory>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<std::optional<SupervisedService>> service(QString target, std::stop_token stop) {
    const ProcessRequest request{.program = u"/bin/launchctl"_s, .arguments = {u"print"_s, target}, .keepOutput = true};
    const auto printed = co_await runProcess(request, std::move(stop));
    if (!printed) {
        co_return std::nullopt;
    }
    if (printed->exitStatus != 0) {
        co_return SupervisedService{};
    }
    auto report = LaunchctlReport::parse(printed->output);
    if (report.process) {
        report.service.since = startOf(static_cast<pid_t>(*report.process));
    }
    co_return report.service;
}

/// Whether the user lets the application post; nothing outside a bundle.
QCoro::Task<std::optional<NotificationFacts>> notifications(std::stop_token stop) {
    if ([[NSBundle mainBundle] bundleIdentifier] == nil) {
        co_return std::nullopt;
    }
    struct Answer {
        bool isAllowed = false;
        Wait* wait = nullptr;
    };
    Wait wait(stop);
    const auto answer = std::make_shared<Answer>(Answer{.wait = &wait});
    [[UNUserNotificationCenter currentNotificationCenter]
        getNotificationSettingsWithCompletionHandler:^(UNNotificationSettings* settings) {
          const bool isAllowed = settings.authorizationStatus == UNAuthorizationStatusAuthorized;
          QMetaObject::invokeMethod(
              QCoreApplication::instance(),
              [answer, isAllowed] {
                  answer->isAllowed = isAllowed;
                  if (answer->wait) {
                      answer->wait->wake();
                  }
              },
              Qt::QueuedConnection);
        }];
    const bool isAnswered = co_await wait.next();
    answer->wait = nullptr;
    if (!isAnswered) {
        co_return std::nullopt;
    }
    co_return NotificationFacts{.exists = answer->isAllowed,
                                .capabilities = {u"actions"_s},
                                .advice = u"Allow them for Tunedeck in System Settings, Notifications."_s};
}

/// The menu bar always exists; whether it shows the icon is in the running application's own measurement.
QCoro::Task<std::optional<TrayFacts>> tray(qint64 /*process*/, std::stop_token /*stop*/) {
    co_return TrayFacts{.exists = true};
}

QCoro::Task<std::optional<bool>> settings(std::stop_token /*stop*/) {
    co_return true;
}

std::optional<RunningInstance> runningInstance(const QString& application) {
    const QFileInfo lock(SingleInstance::defaultLockPath());
    qint64 process = 0;
    QString host;
    QString name;
    if (!QLockFile(lock.filePath()).getLockInfo(&process, &host, &name)) {
        return std::nullopt;
    }
    const auto program = ownProgramPath(static_cast<pid_t>(process));
    if (QFileInfo(program).fileName() != QFileInfo(application).fileName()) {
        return std::nullopt; // left behind by a process that was killed
    }
    return RunningInstance{.process = process, .program = program, .since = lock.lastModified()};
}

} // namespace

SystemProbe systemProbe(const SystemFacts& facts) {
    return {
        .service = [target = ServiceInstaller::serviceTarget(facts.uid)](
                       std::stop_token stop) { return service(target, std::move(stop)); },
        // launchd reads the property list itself.
        .outdatedServiceFile = [](const PropertyDictionary&) { return std::optional<QString>(); },
        .instance = [application = BundlePaths(facts.bundle).application()] { return runningInstance(application); },
        .tray = tray,
        .notifications = notifications,
        .settings = settings,
        .loginItem = [] { return loginItemState(MacLoginItem::status()); }};
}

} // namespace tunedeck
