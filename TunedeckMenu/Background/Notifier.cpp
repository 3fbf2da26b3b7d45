#include "TunedeckMenu/Background/Notifier.h"

#include "TunedeckCore/Support/Files/LogFile.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckCore/Support/Text/Time.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

constexpr int maxTextLength = 160;   // of a text from the service in a notification, in user-perceived characters
constexpr std::size_t maxPosts = 50; // about downloads per status; no honest service has more to report
constexpr std::int64_t maxLogBytes = 1024 * 1024;

/// "1 link", "12 tracks"; "Links" when the number is unknown.
QString countPhrase(const std::optional<std::int64_t>& count, const QString& noun) {
    return count ? counted(*count, noun) : noun.at(0).toUpper() + noun.mid(1) + u's';
}

struct Words {
    QString kind;
    QString title;
    QString body;
};

Words wordsFor(const JobEvent& event) {
    const auto& job = event.job;
    const auto quoted = u'“' + cut(job.playlist, maxTextLength) + u'”';
    switch (event.kind) {
    case JobEvent::Kind::requested:
        return {u"requested"_s, u"New download request"_s, countPhrase(job.links, u"link"_s) + u" → "_s + quoted};
    case JobEvent::Kind::finished:
        return {u"finished"_s, u"Added to Rekordbox"_s,
                countPhrase(job.tracks, u"track"_s) + u" in "_s + quoted +
                    (job.xmlVersion ? u" · XML v"_s + *job.xmlVersion : QString())};
    case JobEvent::Kind::failed:
        break;
    }
    return {u"failed"_s, u"Download failed"_s, quoted + u": "_s + cut(job.message, maxTextLength)};
}

} // namespace

Notifier::Notifier(NotificationCenter& center, Clock& clock, QString auditLog, QObject* parent)
    : QObject(parent), m_center(center), m_clock(clock), m_auditLog(std::move(auditLog)) {
    connect(&m_center, &NotificationCenter::opened, this, [this] {
        if (onOpen) {
            onOpen();
        }
    });
}

void Notifier::start() {
    m_center.start();
}

void Notifier::update(const ServiceStatus& status) {
    const auto events = m_jobs.update(status.recentJobs);
    for (std::size_t i = 0; i < events.size(); ++i) {
        if (i < maxPosts) {
            post(events[i]);
        } else {
            audit(wordsFor(events[i]).kind, events[i].job.jobId, events[i].job.playlist);
        }
    }
    if (events.size() > maxPosts) {
        m_center.post(
            {.identifier = u"more"_s,
             .thread = {},
             .title = u"More downloads"_s,
             .body = u"And "_s + counted(static_cast<std::int64_t>(events.size() - maxPosts), u"more change"_s)});
    }
    if (status.rekordboxDb) {
        if (const auto applied = m_library.update(status.rekordboxDb->lastApplied)) {
            postLibrary(*applied);
        }
    }
}

void Notifier::post(const JobEvent& event) {
    const auto words = wordsFor(event);
    m_center.post({.identifier = event.job.jobId + u'-' + words.kind,
                   .thread = event.job.jobId,
                   .title = words.title,
                   .body = words.body});
    audit(words.kind, event.job.jobId, event.job.playlist);
}

void Notifier::postLibrary(const ServiceStatus::Library::Applied& applied) {
    m_center.post(
        {.identifier = u"library-"_s + applied.at,
         .thread = {},
         .title = u"Rekordbox library updated"_s,
         .body = cut(applied.summary, maxTextLength) + (applied.version ? u" · v"_s + *applied.version : QString())});
    audit(u"library"_s, applied.version.value_or(u"-"_s), applied.summary);
}

void Notifier::audit(const QString& kind, const QString& identifier, const QString& label) {
    // The name of a playlist may contain line breaks.
    const auto line = withoutControls(QStringList{isoTimestamp(m_clock.now()), kind, identifier, label}.join(u' '));
    appendLine(m_auditLog, line, maxLogBytes);
}

} // namespace tunedeck
