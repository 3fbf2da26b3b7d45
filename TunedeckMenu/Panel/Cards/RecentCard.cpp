#include "TunedeckMenu/Panel/Cards/RecentCard.h"

#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/ShownText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

void describeFailure(JobRowView& row) {
    if (!row.message.isEmpty()) {
        row.openName = u"Why “%1” failed"_s.arg(row.playlist);
        row.openHelp = oneLine(row.message);
        row.logButton = u"Open Log"_s;
        row.logName = u"Open Log for “%1”"_s.arg(row.playlist);
    }
}

JobRowView jobRow(const ServiceStatus::Job& job, const QDateTime& now) {
    JobRowView row{
        .id = job.jobId,
        .symbol = u"clock.fill"_s,
        .playlist = oneLine(job.playlist),
        .stateName = jobStateName(job),
        .message = paragraph(job.message),
    };
    if (job.state == u"done") {
        row.symbol = u"checkmark.circle.fill"_s;
        row.tone = look::Tone::Good;
    } else if (job.state == u"failed") {
        row.symbol = u"xmark.octagon.fill"_s;
        row.tone = look::Tone::Bad;
        describeFailure(row);
    } else if (job.state == u"running") {
        row.symbol = u"arrow.down.circle.fill"_s;
        row.tone = look::Tone::Accent;
        row.pulsing = true;
        row.trailing = row.stateName;
        return row;
    }
    if (const auto date = job.date()) {
        row.trailing = relativeDate(*date, now);
    }
    return row;
}

} // namespace

std::span<const ServiceStatus::Job> latestJobs(const ServiceState& service) {
    const ServiceStatus* status = service.status();
    return status ? std::span(status->recentJobs).first(std::min(maxLatestJobs, status->recentJobs.size()))
                  : std::span<const ServiceStatus::Job>();
}

QString jobStateName(const ServiceStatus::Job& job) {
    if (job.state == u"done") {
        return u"Added"_s;
    }
    if (job.state == u"failed") {
        return u"Failed"_s;
    }
    return job.state == u"running" ? u"Downloading"_s : u"Waiting"_s;
}

RecentView recentCard(const ServiceState& service, const QDateTime& now) {
    RecentView card;
    for (const auto& job : latestJobs(service)) {
        card.jobs << jobRow(job, now);
    }
    card.shown = !card.jobs.isEmpty();
    return card;
}

} // namespace tunedeck
