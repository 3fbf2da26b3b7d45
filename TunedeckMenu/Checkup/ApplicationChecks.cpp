#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckCore/Update/UpdateFeed.h"
#include "TunedeckMenu/Checkup/Checks.h"

#include <QFileInfo>

#include <variant>

namespace tunedeck::checks {

using namespace Qt::StringLiterals;

CheckResult application(const CheckContext& context) {
    const auto restart = u"Quit Tunedeck and start it again."_s;
    if (!context.instance) {
        return CheckResult::warning(u"Tunedeck isn't running."_s, u"Start it from the list of applications."_s);
    }
    if (!context.instance->isOnDisk) {
        return CheckResult::warning(u"Tunedeck was updated or moved while it was running."_s, restart);
    }
    if (context.instance->program != QFileInfo(context.bundle().application()).canonicalFilePath()) {
        return CheckResult::warning(
            u"The running Tunedeck is another copy, %1."_s.arg(context.shown(context.instance->program)), restart);
    }
    return CheckResult::ok(u"Version %1 is running."_s.arg(context.facts.appVersion));
}

CheckResult updates(const CheckContext& context) {
    const auto& last = context.lastUpdateCheck;
    const auto checked = last ? u"Last checked "_s + relativeDate(*last, context.now) : u"Not checked yet"_s;
    const auto folder = QFileInfo(context.facts.bundle).absolutePath();
    return CheckResult::ok(
        QFileInfo(folder).isWritable()
            ? checked + u"; Tunedeck can update itself."_s
            : checked + u"; you install new versions, as %1 is write-protected."_s.arg(context.shown(folder)));
}

QCoro::Task<CheckResult> updateFeed(CheckContext context, std::stop_token stop) {
    const auto feed = UpdateFeed::standard(context.bundle().updateHelper());
    const auto check = co_await feed.check(context.facts.appVersion, context.facts.systemVersion, stop);
    if (const auto* available = std::get_if<UpdateCheck::Available>(&check.value)) {
        co_return CheckResult::warning(u"Version %1 is available."_s.arg(available->release.version),
                                       u"Press “Update to %1” in the panel."_s.arg(available->release.version));
    }
    if (const auto* failed = std::get_if<UpdateCheck::Failed>(&check.value)) {
        co_return CheckResult::problem(failed->message, u"Open any web page; if that fails too, check the network."_s);
    }
    co_return CheckResult::ok(u"This is the latest version."_s);
}

} // namespace tunedeck::checks
