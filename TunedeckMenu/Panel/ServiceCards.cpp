#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/Panel.h"

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {

constexpr std::size_t recentJobs = 3;

look::Tone headerTone(const ServiceState& service) {
    if (service.isNotRunning()) {
        return look::Tone::Bad;
    }
    const ServiceStatus* status = service.status();
    if (!status || !status->cloud.enabled) {
        return look::Tone::Secondary;
    }
    return status->cloud.connected.value_or(true) ? look::Tone::Good : look::Tone::Warning;
}

JobRowView jobRow(const ServiceStatus::Job& job, const QDateTime& now) {
    JobRowView row{
        .id = job.jobId,
        .symbol = QStringLiteral("clock.fill"),
        .playlist = job.playlist,
        .stateName = QStringLiteral("Waiting"),
        .message = job.message,
    };
    if (job.state == u"done") {
        row.symbol = QStringLiteral("checkmark.circle.fill");
        row.tone = look::Tone::Good;
        row.stateName = QStringLiteral("Added");
    } else if (job.state == u"failed") {
        row.symbol = QStringLiteral("xmark.octagon.fill");
        row.tone = look::Tone::Bad;
        row.stateName = QStringLiteral("Failed");
    } else if (job.state == u"running") {
        row.symbol = QStringLiteral("arrow.down.circle.fill");
        row.tone = look::Tone::Accent;
        row.pulsing = true;
        row.trailing = QStringLiteral("Downloading");
        row.stateName = row.trailing;
        return row;
    }
    if (const auto date = job.date()) {
        row.trailing = relativeDate(*date, now);
    }
    return row;
}

QString installDetail(const ToolboxReport& toolbox) {
    QStringList parts{toolbox.step.value_or(QString())};
    if (toolbox.progress) {
        parts << QStringLiteral("%1 %").arg(std::lround(std::clamp(*toolbox.progress, 0.0, 1.0) * 100));
    }
    return joined(parts);
}

} // namespace

QString statusLine(const ServiceState& service) {
    if (service.isNotRunning()) {
        return QStringLiteral("Not running");
    }
    const ServiceStatus* status = service.status();
    if (!status) {
        return QStringLiteral("Checking…");
    }
    if (!status->cloud.enabled) {
        return QStringLiteral("Running · cloud off");
    }
    if (!status->cloud.connected) {
        return QStringLiteral("Running · v") + status->version;
    }
    return *status->cloud.connected ? QStringLiteral("Running · connected to the cloud")
                                    : QStringLiteral("Running · cloud not reachable yet");
}

HeaderView headerView(const ServiceState& service) {
    return {.title = QStringLiteral("Tunedeck"), .status = statusLine(service), .tone = headerTone(service)};
}

TextCardView hiddenIconCard(const MenuBarIconVisibility& icon) {
    return {
        .shown = icon.kind == MenuBarIconVisibility::Kind::hidden,
        .title = QStringLiteral("Menu bar"),
        .symbol = QStringLiteral("menubar.rectangle"),
        .text =
            QStringLiteral("Hold ⌘ and drag other icons out of the menu bar to make room — Tunedeck sits next to the "
                           "clock. Until then, open Tunedeck from Spotlight (⌘ Space, “Tunedeck”) to get this "
                           "window."),
    };
}

NotRunningView notRunningCard(const ServiceState& service, bool isStarting) {
    return {
        .shown = service.isNotRunning(),
        .title = QStringLiteral("Service"),
        .symbol = QStringLiteral("bolt.horizontal.circle"),
        .text =
            QStringLiteral("tunedeck isn't running. Downloads you request wait in the cloud queue until it's back."),
        .button = isStarting ? QStringLiteral("Starting…") : QStringLiteral("Start tunedeck"),
        .starting = isStarting,
    };
}

RecentView recentCard(const ServiceState& service, const QDateTime& now) {
    RecentView card{.title = QStringLiteral("Recent"), .symbol = QStringLiteral("clock")};
    if (const ServiceStatus* status = service.status()) {
        for (std::size_t i = 0; i < std::min(recentJobs, status->recentJobs.size()); ++i) {
            card.jobs << jobRow(status->recentJobs[i], now);
        }
    }
    card.shown = !card.jobs.isEmpty();
    return card;
}

ToolsNoticeView toolsNotice(const std::optional<ToolboxReport>& toolbox) {
    ToolsNoticeView card{.title = QStringLiteral("Tools"), .symbol = QStringLiteral("wrench.and.screwdriver")};
    if (!toolbox || (toolbox->allReady() && !toolbox->installing)) {
        return card;
    }
    card.shown = true;
    QStringList missing;
    for (const ToolboxReport::Tool& tool : toolbox->all()) {
        if (!tool.ready && !missing.contains(tool.name)) {
            missing << tool.name;
        }
    }
    if (!missing.isEmpty()) {
        card.text = QStringLiteral("Missing: ") + missing.join(QStringLiteral(", "));
    }
    card.installing = toolbox->installing;
    card.button = QStringLiteral("Repair Tools");
    card.installingText = QStringLiteral("Installing…");
    if (toolbox->installing) {
        card.badge = QStringLiteral("Installing");
        card.badgeTone = look::Tone::Accent;
        card.detail = installDetail(*toolbox);
        card.progress = toolbox->progress ? std::clamp(*toolbox->progress, 0.0, 1.0) : -1;
    } else {
        card.badge = QStringLiteral("Needs repair");
        card.badgeTone = look::Tone::Warning;
        card.detail = toolbox->error.value_or(QString());
    }
    return card;
}

} // namespace tunedeck
