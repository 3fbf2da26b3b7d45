#include "TunedeckMenu/Background/Notifier.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"
#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckCore/Support/Text/Time.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <optional>
#include <tuple>
#include <utility>

namespace tunedeck {

namespace {

constexpr int longestFailure = 160;

/// "1 link", "12 tracks"; "Links" when the number isn't known.
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
        return {QStringLiteral("requested"), QStringLiteral("New download request"),
                countPhrase(job.links, QStringLiteral("link")) + QStringLiteral(" → ") + quoted};
    case JobEvent::Kind::finished:
        return {QStringLiteral("finished"), QStringLiteral("Added to Rekordbox"),
                countPhrase(job.tracks, QStringLiteral("track")) + QStringLiteral(" in ") + quoted +
                    (job.xmlVersion ? QStringLiteral(" · XML v") + *job.xmlVersion : QString())};
    case JobEvent::Kind::failed:
        break;
    }
    return {QStringLiteral("failed"), QStringLiteral("Download failed"),
            quoted + QStringLiteral(": ") + cut(job.message, longestFailure)};
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
        {.identifier = QStringLiteral("library-") + applied.at,
         .thread = {},
         .title = QStringLiteral("Rekordbox library updated"),
         .body = applied.summary + (applied.version ? QStringLiteral(" · v") + *applied.version : QString())});
    audit(QStringLiteral("library"), applied.version.value_or(QStringLiteral("-")), applied.summary);
}

void Notifier::audit(const QString& kind, const QString& identifier, const QString& label) {
    auto line = QStringList{isoTimestamp(m_clock.now()), kind, identifier, label}.join(u' ');
    // A playlist may be called anything; each notification still has one line.
    line.replace(u'\n', u' ').replace(u'\r', u' ');
    appendLine(m_auditLog, line + u'\n');
}

void appendLine(const QString& path, const QString& line) {
    if (!createFolder(QFileInfo(path).path())) {
        return;
    }
    // Non-blocking, so that a FIFO of that name is refused rather than waited for.
    const FileDescriptor file(::open(QFile::encodeName(path).constData(),
                                     O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, 0666));
    struct stat before{};
    if (file && ::fstat(file.get(), &before) == 0 && S_ISREG(before.st_mode)) {
        const auto bytes = line.toUtf8();
        const auto written = ::write(file.get(), bytes.constData(), static_cast<std::size_t>(bytes.size()));
        if (written >= 0 && written < bytes.size()) {
            std::ignore = ::ftruncate(file.get(), before.st_size);
        }
    }
}

} // namespace tunedeck
