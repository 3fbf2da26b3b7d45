#include "TunedeckCore/Diagnostics.h"

#include "TunedeckCore/Masking.h"
#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "TunedeckCore/Support/Text/Text.h"
#include "TunedeckCore/Support/Text/Time.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace tunedeck::Diagnostics {

using namespace Qt::StringLiterals;

namespace {

void addLibrary(QStringList& lines, const ServiceStatus::Library& library) {
    lines += u"Rekordbox library: v"_s + library.currentVersion.value_or(u"—"_s) +
             u" · %1 pending · %2 failed"_s.arg(library.pending.size()).arg(library.failed.size()) +
             (library.rekordboxRunning ? u" · Rekordbox open"_s : QString());
    if (library.lastError) {
        lines += u"  last error: "_s + *library.lastError;
    }
}

void addStatus(QStringList& lines, const ServiceStatus& status) {
    constexpr std::size_t jobs = 5;
    QString cloud = status.cloud.enabled ? u"Cloud: on"_s : u"Cloud: off"_s;
    if (status.cloud.protocol) {
        cloud += u" · protocol "_s + QString::number(*status.cloud.protocol);
    }
    if (status.cloud.connected) {
        cloud += *status.cloud.connected ? u" · connected"_s : u" · not connected"_s;
    }
    lines += cloud;
    lines +=
        u"Downloads: "_s + status.downloadDir + (status.downloadDirWritable ? u" (writable)"_s : u" (NOT writable)"_s);
    lines += u"Import XML: "_s + status.importXml + (status.xmlVersion ? u" · v"_s + *status.xmlVersion : QString());
    if (status.rekordboxDb) {
        addLibrary(lines, *status.rekordboxDb);
    }
    for (std::size_t i = 0; i < std::min(jobs, status.recentJobs.size()); ++i) {
        const ServiceStatus::Job& job = status.recentJobs[i];
        lines += u"Job "_s + job.jobId + u' ' + job.state + u": "_s + job.message;
    }
}

void addToolbox(QStringList& lines, const ToolboxReport& toolbox) {
    QStringList tools;
    for (const ToolboxReport::Tool& tool : toolbox.tools) {
        tools += tool.name + u' ' + tool.displayVersion().value_or(u"missing"_s) +
                 (tool.ready ? QString() : u" (not ready)"_s);
    }
    lines += u"Tools: "_s + tools.join(u", "_s);
    if (toolbox.error) {
        lines += u"  toolbox error: "_s + *toolbox.error;
    }
    if (toolbox.manifest) {
        lines += u"  manifest: "_s + *toolbox.manifest;
    }
}

QString assistants(const std::vector<AssistantLink>& links) {
    QStringList texts;
    for (const AssistantLink& link : links) {
        texts += link.displayName() + (link.isConnected() ? u" (used)"_s : u" (not used yet)"_s);
    }
    return texts.isEmpty() ? u"none"_s : texts.join(u", "_s);
}

/// The last `most` bytes of a regular file, or fewer.
QByteArray tail(const QString& path, std::int64_t most) {
    const FileDescriptor file = openForReading(path);
    struct ::stat facts{};
    if (!file || ::fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode)) {
        return {};
    }
    const std::int64_t wanted = std::clamp<std::int64_t>(most, 0, facts.st_size);
    QByteArray bytes(wanted, Qt::Uninitialized);
    std::int64_t count = 0;
    while (count < wanted) {
        const auto got = ::pread(file.get(), bytes.data() + count, static_cast<std::size_t>(wanted - count),
                                 facts.st_size - wanted + count);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break; // the file was truncated
        }
        count += got;
    }
    bytes.truncate(count);
    return bytes;
}

} // namespace

QString report(const Input& input, const QDateTime& now) {
    QStringList lines{u"Tunedeck diagnostics · "_s + isoTimestamp(now),
                      u"App "_s + input.appVersion + u" · service "_s + input.serviceVersion.value_or(u"not running"_s),
                      u"macOS "_s + input.macOS + u" · "_s + input.chip};
    if (input.status) {
        addStatus(lines, *input.status);
    }
    if (input.toolbox) {
        addToolbox(lines, *input.toolbox);
    }
    lines += u"Assistants: "_s + assistants(input.links);
    lines += QString();
    lines += u"Recent warnings and errors:"_s;
    lines += input.logLines.isEmpty() ? QStringList(u"(none)"_s) : input.logLines;
    for (QString& line : lines) {
        line = withoutControls(line);
    }
    return maskCredentials(mask(lines.join(u'\n')));
}

QStringList warningLines(const QString& log, int limit, std::int64_t tailBytes) {
    QStringList found;
    for (const QByteArray& line : tail(log, tailBytes).split('\n')) {
        if (line.contains(" WARN ") || line.contains(" ERROR ")) {
            found += QString::fromUtf8(line);
        }
    }
    return found.last(std::clamp<qsizetype>(limit, 0, found.size()));
}

} // namespace tunedeck::Diagnostics
