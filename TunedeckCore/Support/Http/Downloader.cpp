#include "TunedeckCore/Support/Http/Downloader.h"

#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"

#include <QCoreApplication>
#include <QTemporaryFile>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// Parser of the helper's output.
struct Report {
    DownloadProgress progress;
    QByteArray buffer = {};
    std::optional<int> status = {};
    QString error = {};

    void append(const QByteArray& part) {
        buffer += part;
        for (qsizetype end = buffer.indexOf('\n'); end >= 0; end = buffer.indexOf('\n')) {
            parseLine(buffer.left(end));
            buffer.remove(0, end + 1);
        }
    }

    void parseLine(const QByteArray& text) {
        const QList<QByteArray> words = text.split(' ');
        if (words[0] == "progress" && words.size() == 3 && progress) {
            const std::int64_t total = words[2].toLongLong();
            progress(words[1].toLongLong(), total > 0 ? std::optional(total) : std::nullopt);
        } else if (words[0] == "status" && words.size() == 2) {
            status = words[1].toInt();
        } else if (words[0] == "error") {
            error = QString::fromUtf8(text.mid(6));
        }
    }
};

} // namespace

QCoro::Task<std::expected<int, QString>> Downloader::download(DownloadRequest request, DownloadProgress progress,
                                                              std::stop_token stop) const {
    auto report = std::make_shared<Report>(std::move(progress));
    ProcessRequest process{
        .program = m_helper,
        .arguments = {u"--file"_s, request.file, u"--limit"_s, QString::number(request.limit), u"--timeout"_s,
                      QString::number(request.timeout.count()), u"--parent"_s,
                      QString::number(QCoreApplication::applicationPid()), u"--"_s,
                      QString::fromLatin1(request.url.toEncoded())},
        .onOutput = [report](const QByteArray& part) { report->append(part); },
    };
    const auto result = co_await runProcess(process, stop);
    if (!result) {
        co_return std::unexpected(result.error());
    }
    if (const auto status = report->status) {
        co_return *status;
    }
    co_return std::unexpected(report->error.isEmpty() ? u"The download ended unexpectedly."_s : report->error);
}

QCoro::Task<std::expected<Downloader::Document, QString>> Downloader::fetch(QUrl url, std::int64_t limit,
                                                                            std::chrono::seconds timeout,
                                                                            std::stop_token stop) const {
    QTemporaryFile file;
    if (!file.open()) {
        co_return std::unexpected(file.errorString());
    }
    DownloadRequest request{.url = std::move(url), .file = file.fileName(), .limit = limit, .timeout = timeout};
    const auto status = co_await download(request, {}, stop);
    if (!status) {
        co_return std::unexpected(status.error());
    }
    Document document{.status = *status};
    if (document.status == 200) {
        auto body = readFile(file.fileName(), limit);
        if (!body) {
            co_return std::unexpected(u"The download can't be read."_s);
        }
        document.body = std::move(*body);
    }
    co_return document;
}

} // namespace tunedeck
