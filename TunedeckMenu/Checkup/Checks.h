#pragma once

#include "TunedeckMenu/Checkup/CheckContext.h"
#include "TunedeckMenu/Checkup/CheckResult.h"

#include <QCoroTask>

#include <stop_token>

/// The checks, each in the file of its subject. Those that take no token may block; they run on a separate thread.
namespace tunedeck::checks {

/// The result of a check that needs the service's status when there is none.
inline CheckResult serviceNeeded() {
    return CheckResult::warning(QStringLiteral("Not checked: the service has to answer first."));
}

// ServiceChecks.cpp
CheckResult serviceProgram(const CheckContext& context);
CheckResult serviceFiles(const CheckContext& context);
QCoro::Task<CheckResult> serviceProcess(CheckContext context, std::stop_token stop);
CheckResult serviceAnswer(const CheckContext& context);

// DownloadChecks.cpp
QCoro::Task<CheckResult> tools(CheckContext context, std::stop_token stop);
CheckResult downloadFolder(const CheckContext& context);

// CloudChecks.cpp
CheckResult cloud(const CheckContext& context);
QCoro::Task<CheckResult> relay(CheckContext context, std::stop_token stop);
CheckResult tunnel(const CheckContext& context);

// RekordboxCheck.cpp
CheckResult rekordbox(const CheckContext& context);

// DesktopChecks.cpp
QCoro::Task<CheckResult> trayIcon(CheckContext context, std::stop_token stop);
QCoro::Task<CheckResult> notifications(CheckContext context, std::stop_token stop);
QCoro::Task<CheckResult> desktopSettings(CheckContext context, std::stop_token stop);
CheckResult openAtLogin(const CheckContext& context);

// ApplicationChecks.cpp
CheckResult application(const CheckContext& context);
CheckResult updates(const CheckContext& context);
/// Asks the update feed over the internet.
QCoro::Task<CheckResult> updateFeed(CheckContext context, std::stop_token stop);

} // namespace tunedeck::checks
