#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Support/Files/Document.h"
#include "TunedeckCore/Support/Files/FileCopy.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Checkup/Checks.h"

#include <QFileInfo>

#include <variant>

namespace tunedeck::checks {

using namespace Qt::StringLiterals;

namespace {

const auto restartAdvice = u"Quit Tunedeck if it is running, and start it: it repairs the service."_s;
const auto startAdvice = u"Start Tunedeck, and press “Start tunedeck” if its panel offers that."_s;

/// The advice of a failure whose cause only the service knows.
QString logAdvice(const CheckContext& context) {
    return u"The end of %1 says why."_s.arg(context.shown(context.paths().serviceLog()));
}

} // namespace

CheckResult serviceProgram(const CheckContext& context) {
    const auto bundled = context.bundle().service();
    const QFileInfo installed(context.paths().service());
    if (!QFileInfo::exists(bundled)) {
        return CheckResult::warning(u"This copy of Tunedeck contains no service program."_s,
                                    u"Install Tunedeck again."_s);
    }
    if (!installed.exists()) {
        return CheckResult::problem(u"It isn't installed."_s, u"Start Tunedeck: it installs the service."_s);
    }
    if (!installed.isFile() || !installed.isExecutable()) {
        return CheckResult::problem(
            u"The installed program can't be executed."_s,
            u"Delete %1, then quit Tunedeck and start it again."_s.arg(context.shown(installed.filePath())));
    }
    return haveSameBytes(bundled, installed.filePath())
               ? CheckResult::ok(u"It is installed, and the same as in this Tunedeck."_s)
               : CheckResult::warning(u"The installed program isn't the one in this Tunedeck."_s, restartAdvice);
}

CheckResult serviceFiles(const CheckContext& context) {
    SystemClock clock;
    const ServiceInstaller installer(context.facts.home, std::nullopt, context.facts.uid, {}, clock);
    const auto plist = readDocument(installer.plistURL());
    const bool isCurrent = plist && parsePropertyList(*plist) == installer.plist();
    const auto outdated =
        isCurrent ? context.system.outdatedServiceFile(installer.plist()) : std::optional(installer.plistURL());
    if (!outdated) {
        return CheckResult::ok(u"The files that start the service are as they should be."_s);
    }
    const auto path = context.shown(*outdated);
    return QFileInfo::exists(*outdated) ? CheckResult::warning(path + u" was changed."_s, restartAdvice)
                                        : CheckResult::problem(path + u" is missing."_s, restartAdvice);
}

QCoro::Task<CheckResult> serviceProcess(CheckContext context, std::stop_token stop) {
    const auto service = co_await context.system.service(stop);
    if (!service) {
        co_return CheckResult::problem(u"The system's service manager doesn't answer."_s,
                                       u"Log in at the desktop; after “su” or “sudo” there is no service manager."_s);
    }
    const auto exit = service->lastExit ? u"; it ended with "_s + *service->lastExit : QString();
    switch (service->state) {
    case SupervisedService::State::Unknown:
        co_return CheckResult::problem(u"It isn't set up."_s, startAdvice);
    case SupervisedService::State::Stopped:
        co_return CheckResult::problem(u"It is stopped"_s + exit + u'.', startAdvice);
    case SupervisedService::State::Restarting:
        co_return CheckResult::problem(u"It keeps ending and is started again"_s + exit + u'.', logAdvice(context));
    case SupervisedService::State::Running:
        break;
    }
    const auto running = u"It has been running since "_s + dateAndTime(service->since.value_or(context.now));
    if (service->restarts > 0) {
        co_return CheckResult::warning(
            running + u", after ending unexpectedly (%1)."_s.arg(counted(service->restarts, u"time"_s)),
            logAdvice(context));
    }
    co_return CheckResult::ok(running + u'.');
}

CheckResult serviceAnswer(const CheckContext& context) {
    const auto port = context.serviceUrl.port();
    if (context.status) {
        return CheckResult::ok(u"Version %1 answers on port %2."_s.arg(context.status->version, QString::number(port)));
    }
    if (const auto* error = std::get_if<json::Error>(&context.status.error())) {
        return CheckResult::problem(u"Its status can't be read. "_s + error->description(),
                                    u"Update Tunedeck, then press “Restart tunedeck”: the two may not fit together."_s);
    }
    const auto* failure = std::get_if<HttpFailure>(&context.status.error());
    if (failure && *failure == HttpFailure::Unreachable) {
        return CheckResult::problem(u"Nothing answers on port %1."_s.arg(port), startAdvice);
    }
    if (failure && *failure == HttpFailure::TimedOut) {
        return CheckResult::problem(u"It doesn't answer in time on port %1."_s.arg(port),
                                    u"Press “Restart tunedeck” at the bottom of the panel."_s);
    }
    return CheckResult::problem(u"What answers on port %1 isn't the service."_s.arg(port), restartAdvice);
}

} // namespace tunedeck::checks
