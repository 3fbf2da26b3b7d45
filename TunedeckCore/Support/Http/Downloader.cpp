#include "TunedeckCore/Support/Http/Downloader.h"

#include "TunedeckCore/Support/Async/Process.h"
#include "TunedeckCore/Support/Files/AtomicFile.h"

#include <QCoreApplication>
#include <QTemporaryFile>

namespace tunedeck {

namespace {

/// What the helper prints, line by line.
struct Report {
    DownloadProgress progress;
    QByteArray rest = {};
    std::optional<int> status = {};
    QString error = {};

    void take(const QByteArray& part) {
        rest += part;
        for (qsizetype end = rest.indexOf('\n'); end >= 0; end = rest.indexOf('\n')) {
            line(rest.left(end));
            rest.remove(0, end + 1);
        }
    }

    void line(const QByteArray& text) {
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
        .arguments = {QStringLiteral("--file"), request.file, QStringLiteral("--limit"), QString::number(request.limit),
                      QStringLiteral("--timeout"), QString::number(request.timeout.count()), QStringLiteral("--parent"),
                      QString::number(QCoreApplication::applicationPid()), QStringLiteral("--"),
                      QString::fromLatin1(request.url.toEncoded())},
        .onOutput = [report](const QByteArray& part) { report->take(part); },
    };
    const auto result = co_await runProcess(process, stop);
    if (!result) {
        co_return std::unexpected(result.error());
    }
    if (const auto status = report->status) {
        co_return *status;
    }
    co_return std::unexpected(report->error.isEmpty() ? QStringLiteral("The download broke off.") : report->error);
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
            co_return std::unexpected(QStringLiteral("The download can't be read."));
        }
        document.body = std::move(*body);
    }
    co_return document;
}

} // namespace tunedeck
