#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <chrono>
#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// A download from the internet to a file.
struct DownloadRequest {
    QUrl url;
    QString file;                    ///< an existing file is replaced
    std::int64_t limit = 0;          ///< maximum size in bytes
    std::chrono::seconds timeout{0}; ///< for the whole download
};

/// Bytes received so far, and the total if the server sent it.
using DownloadProgress = std::function<void(std::int64_t received, std::optional<std::int64_t> total)>;

/// Downloads with the bundle's helper program, in a separate process that can't write files: it sends the body through
/// a pipe, which is stored unread. Cancelling kills the process. A download without a byte for 30 seconds fails.
class Downloader {
public:
    /// `helper`: path of the program.
    explicit Downloader(QString helper) : m_helper(std::move(helper)) {}

    /// Returns the HTTP status of the final response; 0 if it isn't HTTP. The file gets the body if the status is 200,
    /// else it is empty. An error is the description of the transport's or the disk's error.
    QCoro::Task<std::expected<int, QString>> download(DownloadRequest request, DownloadProgress progress,
                                                      std::stop_token stop) const;

    struct Document {
        int status = 0;
        QByteArray body;
    };
    /// Downloads a small document to memory; see download().
    QCoro::Task<std::expected<Document, QString>> fetch(QUrl url, std::int64_t limit, std::chrono::seconds timeout,
                                                        std::stop_token stop) const;

private:
    QString m_helper;
};

} // namespace tunedeck
