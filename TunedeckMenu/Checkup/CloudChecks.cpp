#include "TunedeckCore/Service/CloudHealth.h"
#include "TunedeckCore/Service/TunnelConfig.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckCore/Support/Text/Time.h"
#include "TunedeckMenu/Checkup/Checks.h"

#include <QFileInfo>

namespace tunedeck::checks {

using namespace Qt::StringLiterals;

namespace {

const auto networkAdvice = u"Open any web page; if that fails too, check the network."_s;
const auto restartAdvice = u"Press “Restart tunedeck” at the bottom of the panel."_s;

QString lastSeen(const CloudHealth::Agent& agent, const QDateTime& now) {
    const auto date = parseTimestamp(agent.lastSeen);
    return date ? u", last seen "_s + relativeDate(*date, now) : QString();
}

} // namespace

CheckResult cloud(const CheckContext& context) {
    if (!context.status) {
        return serviceNeeded();
    }
    const auto& cloud = context.status->cloud;
    if (!cloud.enabled) {
        return CheckResult::warning(u"It is switched off in the service, so assistants can't send requests."_s);
    }
    if (!cloud.registered.value_or(false)) {
        return CheckResult::warning(u"This computer isn't registered yet."_s, networkAdvice);
    }
    if (!cloud.connected) {
        return CheckResult::warning(u"The service is still connecting."_s, u"Wait a minute and check again."_s);
    }
    return *cloud.connected
               ? CheckResult::ok(u"This computer is registered and connected."_s)
               : CheckResult::problem(u"The service can't reach it; requests wait there."_s, networkAdvice);
}

QCoro::Task<CheckResult> relay(CheckContext context, std::stop_token stop) {
    if (!context.status) {
        co_return serviceNeeded();
    }
    if (!context.status->cloud.enabled) {
        co_return CheckResult::ok(u"Not asked, as the cloud is switched off."_s);
    }
    const auto baseUrl = context.status->cloud.baseUrl;
    const auto host = QUrl(baseUrl).host();
    const auto health = co_await CloudHealth::fetch(baseUrl, context.downloader(), stop);
    if (!health) {
        co_return CheckResult::warning(host + u" doesn't answer."_s, networkAdvice);
    }
    const auto queued = health->queued.value_or(0);
    const auto waiting = queued == 0 ? QString() : u" Waiting there: "_s + counted(queued, u"request"_s) + u'.';
    if (health->status != u"ok") {
        co_return CheckResult::warning(u"%1 reports “%2”."_s.arg(host, health->status) + waiting,
                                       u"Try again later."_s);
    }
    if (health->agent && !health->agent->online) {
        co_return CheckResult::warning(host + u" doesn't see this computer"_s + lastSeen(*health->agent, context.now) +
                                           u'.' + waiting,
                                       restartAdvice);
    }
    co_return CheckResult::ok(host + u" works."_s + waiting);
}

CheckResult tunnel(const CheckContext& context) {
    const auto path = context.paths().tunnelConfig();
    if (!QFileInfo::exists(path)) {
        return CheckResult::ok(u"None; Tunedeck doesn't need one."_s);
    }
    const auto config = TunnelConfig::load(path);
    if (!config) {
        return CheckResult::warning(context.shown(path) + u" names no tunnel."_s,
                                    u"If you use cloudflared, check that file; Tunedeck doesn't need it."_s);
    }
    const auto name = config->hostname.value_or(u"Your tunnel"_s);
    const auto target = config->service.value_or(QString());
    const auto port = QUrl(target).port();
    if (port > 0 && port != context.serviceUrl.port()) {
        return CheckResult::warning(u"%1 leads to port %2, but the service is on port %3."_s.arg(
                                        name, QString::number(port), QString::number(context.serviceUrl.port())),
                                    u"Change the service in %1."_s.arg(context.shown(path)));
    }
    return CheckResult::ok(target.isEmpty() ? name + u" is configured."_s : u"%1 leads to %2."_s.arg(name, target));
}

} // namespace tunedeck::checks
