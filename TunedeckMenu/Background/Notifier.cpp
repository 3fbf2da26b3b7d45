#include "TunedeckMenu/Background/Notifier.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckCore/Support/Text/Time.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <optional>
#include <tuple>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

constexpr int maxFailureLength = 160;

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
    const auto quoted = u'“' + job.playlist + u'”';
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
    return {u"failed"_s, u"Download failed"_s, quoted + u": "_s + cut(job.message, maxFailureLength)};
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
    for (const auto& event : m_jobs.update(status.recentJobs)) {
        post(event);
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
    m_center.post({.identifier = u"library-"_s + applied.at,
                   .thread = {},
                   .title = u"Rekordbox library updated"_s,
                   .body = applied.summary + (applied.version ? u" · v"_s + *applied.version : QString())});
    audit(u"library"_s, applied.version.value_or(u"-"_s), applied.summary);
}

void Notifier::audit(const QString& kind, const QString& identifier, const QString& label) {
    auto line = QStringList{isoTimestamp(m_clock.now()), kind, identifier, label}.join(u' ');
    // The name of a playlist may contain line breaks.
    line.replace(u'\n', u' ').replace(u'\r', u' ');
    appendLine(m_auditLog, line + u'\n');
}

void appendLine(const QString& path, const QString& line) {
    if (!createFolder(QFileInfo(path).path())) {
        return;
    }
    // O_NONBLOCK: opening a FIFO fails instead of waiting for a reader.
    const FileDescriptor file(::open(QFile::encodeName(path).constData(),
                                     O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, 0666));
    if (file) {
        const auto bytes = line.toUtf8();
        std::ignore = ::write(file.get(), bytes.constData(), static_cast<std::size_t>(bytes.size()));
    }
}

} // namespace tunedeck
