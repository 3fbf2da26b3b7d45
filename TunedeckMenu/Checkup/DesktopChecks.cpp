#include "TunedeckCore/Support/Files/Document.h"
#include "TunedeckCore/Support/Json/Parse.h"
#include "TunedeckCore/Support/Text/Time.h"
#include "TunedeckMenu/Checkup/Checks.h"

namespace tunedeck::checks {

using namespace Qt::StringLiterals;

namespace {

CheckResult noDesktop() {
    return CheckResult::warning(u"Not checked: this terminal doesn't belong to a desktop."_s,
                                u"Run the check-up in a terminal of your desktop."_s);
}

/// What the running application measured last about its icon: "visible", "hidden: …".
std::optional<QString> measurement(const QString& path, const RunningInstance& instance) {
    const auto record = json::parseObject(readDocument(path).value_or(QByteArray())).value_or(json::Object());
    const auto date = parseTimestamp(record.text("checked_at"_L1));
    return date && *date >= instance.since.addSecs(-1) ? record.text("status"_L1) : std::nullopt;
}

} // namespace

QCoro::Task<CheckResult> trayIcon(CheckContext context, std::stop_token stop) {
    const auto tray = co_await context.system.tray(context.instance ? context.instance->process : 0, stop);
    if (!tray) {
        co_return noDesktop();
    }
    if (!tray->exists) {
        co_return CheckResult::warning(u"This desktop shows no tray icons; Tunedeck opens its window instead."_s,
                                       u"On GNOME, install the extension “AppIndicator Support”."_s);
    }
    if (!context.instance) {
        co_return CheckResult::ok(u"The desktop has a tray; the icon appears when Tunedeck runs."_s);
    }
    const auto measured = measurement(context.paths().menuBarReport(), *context.instance);
    const bool isShown = tray->showsIcon.value_or(measured == u"visible");
    co_return isShown ? CheckResult::ok(u"The icon is in the tray."_s)
                      : CheckResult::warning(u"Tunedeck is running, but its icon isn't in the tray."_s,
                                             u"Quit Tunedeck and start it again."_s);
}

QCoro::Task<CheckResult> notifications(CheckContext context, std::stop_token stop) {
    const auto facts = co_await context.system.notifications(stop);
    if (!facts) {
        co_return noDesktop();
    }
    if (!facts->exists) {
        co_return CheckResult::warning(u"This desktop shows no notifications."_s, facts->advice);
    }
    auto result = facts->capabilities.contains(u"actions"_s)
                      ? CheckResult::ok(u"The desktop shows them."_s)
                      : CheckResult::warning(u"The desktop shows them, but a click on one does nothing."_s);
    result.details = facts->capabilities.join(u", "_s);
    co_return result;
}

QCoro::Task<CheckResult> desktopSettings(CheckContext context, std::stop_token stop) {
    const auto reported = co_await context.system.settings(stop);
    if (!reported) {
        co_return noDesktop();
    }
    co_return *reported ? CheckResult::ok(u"Tunedeck follows the desktop's light or dark style."_s)
                        : CheckResult::warning(u"The desktop doesn't report whether it is light or dark."_s,
                                               u"Install the desktop's portal (package xdg-desktop-portal)."_s);
}

CheckResult openAtLogin(const CheckContext& context) {
    switch (context.system.loginItem()) {
    case LoginItemState::Off:
        return CheckResult::ok(u"Off."_s);
    case LoginItemState::On:
        return CheckResult::ok(u"On."_s);
    case LoginItemState::Broken:
        break;
    }
    return CheckResult::warning(u"There is an entry for it, but the desktop doesn't use it."_s,
                                u"Switch “Open at Login” on in the panel, or off and on again."_s);
}

} // namespace tunedeck::checks
