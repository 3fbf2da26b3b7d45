#include "TunedeckMenu/Panel/Cards/RecentCard.h"

#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckMenu/Panel/ShownText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

constexpr std::size_t maxRows = 3;

JobRowView jobRow(const ServiceStatus::Job& job, const QDateTime& now) {
    JobRowView row{
        .id = job.jobId,
        .symbol = u"clock.fill"_s,
        .playlist = oneLine(job.playlist),
        .stateName = u"Waiting"_s,
        .message = paragraph(job.message),
    };
    if (job.state == u"done") {
        row.symbol = u"checkmark.circle.fill"_s;
        row.tone = look::Tone::Good;
        row.stateName = u"Added"_s;
    } else if (job.state == u"failed") {
        row.symbol = u"xmark.octagon.fill"_s;
        row.tone = look::Tone::Bad;
        row.stateName = u"Failed"_s;
    } else if (job.state == u"running") {
        row.symbol = u"arrow.down.circle.fill"_s;
        row.tone = look::Tone::Accent;
        row.pulsing = true;
        row.trailing = u"Downloading"_s;
        row.stateName = row.trailing;
        return row;
    }
    if (const auto date = job.date()) {
        row.trailing = relativeDate(*date, now);
    }
    return row;
}

} // namespace

RecentView recentCard(const ServiceState& service, const QDateTime& now) {
    RecentView card;
    if (const ServiceStatus* status = service.status()) {
        for (std::size_t i = 0; i < std::min(maxRows, status->recentJobs.size()); ++i) {
            card.jobs << jobRow(status->recentJobs[i], now);
        }
    }
    card.shown = !card.jobs.isEmpty();
    return card;
}

} // namespace tunedeck
