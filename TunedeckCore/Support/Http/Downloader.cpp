#include "TunedeckCore/Support/Http/Downloader.h"

#include "TunedeckCore/Support/Async/HelperProgram.h"
#include "TunedeckCore/Support/Files/FileDescriptor.h"

#include <QFile>

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// How much longer than its own time limit the helper may take before it is killed.
constexpr std::chrono::seconds grace{2};

/// Where the body goes. Its size is checked here as well, because the helper handles untrusted data.
struct Body {
    std::function<bool(const QByteArray& part)> store; ///< false, with errno set, on failure
    std::int64_t remaining;                            ///< bytes of the limit
    QString error = {};

    bool append(const QByteArray& part) {
        remaining -= part.size();
        if (remaining < 0) {
            error = u"The download exceeds its size limit."_s;
        } else if (!store(part)) {
            error = qt_error_string(errno);
        }
        return error.isEmpty();
    }
};

QCoro::Task<std::expected<int, QString>> receive(QString helper, DownloadRequest request,
                                                 std::function<bool(const QByteArray&)> store,
                                                 DownloadProgress progress, std::stop_token stop) {
    const auto body = std::make_shared<Body>(std::move(store), request.limit);
    HelperRequest run{
        .subcommand = u"fetch"_s,
        .operands = {QString::number(request.limit), QString::number(request.timeout.count()),
                     QString::fromLatin1(request.url.toEncoded())},
        .timeLimit = request.timeout + grace,
        .onOutput = [body](const QByteArray& part) { return body->append(part); },
        .onProgress =
            [progress](const QList<QByteArray>& words) {
                const std::int64_t total = words.value(1).toLongLong();
                const std::int64_t received = std::max<std::int64_t>(words.value(0).toLongLong(), 0);
                if (progress) {
                    progress(received, total > 0 && total >= received ? std::optional(total) : std::nullopt);
                }
            },
    };
    const auto ended = co_await runHelper(helper, run, stop);
    if (!body->error.isEmpty()) {
        co_return std::unexpected(body->error);
    }
    if (!ended) {
        co_return std::unexpected(ended.error());
    }
    if (ended->status == HelperStatus::Failed) {
        co_return std::unexpected(ended->text);
    }
    co_return ended->status == HelperStatus::Done ? 200 : ended->text.toInt();
}

} // namespace

QCoro::Task<std::expected<int, QString>> Downloader::download(DownloadRequest request, DownloadProgress progress,
                                                              std::stop_token stop) const {
    const auto file = std::make_shared<FileDescriptor>(::open(
        QFile::encodeName(request.file).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!*file) {
        co_return std::unexpected(qt_error_string(errno));
    }
    const auto store = [file](const QByteArray& part) {
        return writeAll(file->get(), part.constData(), static_cast<std::size_t>(part.size()));
    };
    const auto status = co_await receive(m_helper, std::move(request), store, std::move(progress), stop);
    if (!file->close() && status) {
        co_return std::unexpected(qt_error_string(errno));
    }
    co_return status;
}

QCoro::Task<std::expected<Downloader::Document, QString>> Downloader::fetch(QUrl url, std::int64_t limit,
                                                                            std::chrono::seconds timeout,
                                                                            std::stop_token stop) const {
    const auto body = std::make_shared<QByteArray>();
    DownloadRequest request{.url = std::move(url), .limit = limit, .timeout = timeout};
    const auto store = [body](const QByteArray& part) {
        body->append(part);
        return true;
    };
    const auto status = co_await receive(m_helper, request, store, {}, stop);
    if (!status) {
        co_return std::unexpected(status.error());
    }
    co_return Document{.status = *status, .body = std::move(*body)};
}

} // namespace tunedeck
