#include "TunedeckMenu/Checkup/Checkup.h"

#include "TunedeckCore/Service/ServiceEndpoint.h"
#include "TunedeckCore/Support/Async/Background.h"
#include "TunedeckCore/Support/Text/Time.h"
#include "TunedeckMenu/Checkup/CheckRunner.h"
#include "TunedeckMenu/Checkup/Checks.h"
#include "TunedeckMenu/Model/UpdateServices.h"

#include <chrono>
#include <memory>
#include <utility>

namespace tunedeck {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

// With the two seconds that the status may take, all checks end within ten.
constexpr auto internetLimit = 7s;

using Context = std::shared_ptr<const CheckContext>;
using BlockingCheck = CheckResult(const CheckContext& context);
using AsyncCheck = QCoro::Task<CheckResult>(CheckContext context, std::stop_token stop);

QCoro::Task<CheckResult> inThread(BlockingCheck* check, Context context, std::stop_token stop) {
    const std::function<CheckResult(std::stop_token)> work = [check, context](const std::stop_token&) {
        return check(*context);
    };
    const auto result = co_await inBackground(work, stop);
    co_return result.value_or(CheckResult());
}

Check blocking(const QString& name, BlockingCheck* check, const Context& context) {
    return {.name = name,
            .run = [check, context](std::stop_token stop) { return inThread(check, context, std::move(stop)); }};
}

Check async(const QString& name, AsyncCheck* check, const Context& context) {
    return {.name = name, .run = [check, context](std::stop_token stop) { return check(*context, std::move(stop)); }};
}

/// In the order in which they are shown.
std::vector<Check> allChecks(const Context& context, bool online) {
    std::vector<Check> all{
        async(u"Service"_s, checks::serviceProcess, context),
        blocking(u"Service answer"_s, checks::serviceAnswer, context),
        blocking(u"Service program"_s, checks::serviceProgram, context),
        blocking(u"Service files"_s, checks::serviceFiles, context),
        async(u"Tools"_s, checks::tools, context),
        blocking(u"Download folder"_s, checks::downloadFolder, context),
        blocking(u"Rekordbox"_s, checks::rekordbox, context),
        blocking(u"Cloud"_s, checks::cloud, context),
        async(u"Cloud relay"_s, checks::relay, context),
        blocking(u"Your own tunnel"_s, checks::tunnel, context),
        blocking(u"Tunedeck"_s, checks::application, context),
        async(u"Tray icon"_s, checks::trayIcon, context),
        async(u"Notifications"_s, checks::notifications, context),
        async(u"Light or dark"_s, checks::desktopSettings, context),
        blocking(u"Open at Login"_s, checks::openAtLogin, context),
        blocking(u"Updates"_s, checks::updates, context),
    };
    if (online) {
        all.push_back(async(u"Update feed"_s, checks::updateFeed, context));
        all.back().limit = internetLimit;
    }
    return all;
}

} // namespace

QCoro::Task<std::vector<CheckResult>> checkup(CheckupInput input) {
    CheckContext context{.facts = input.facts,
                         .system = input.system,
                         .now = input.clock.now(),
                         .lastUpdateCheck = parseTimestamp(input.defaults.value(lastUpdateCheckKey))};
    context.serviceUrl = ServiceEndpoint::base(ServiceEndpoint::runtimeFile());
    context.instance = context.system.instance();
    const StatusClient client;
    context.status = co_await client.request();
    const auto shared = std::make_shared<const CheckContext>(std::move(context));
    auto results = co_await runChecks(allChecks(shared, input.online), &input.clock);
    co_return results;
}

} // namespace tunedeck
