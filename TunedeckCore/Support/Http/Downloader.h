#pragma once

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

/// One download from the internet to a file.
struct DownloadRequest {
    QUrl url;
    QString file;                    ///< replaced when it exists
    std::int64_t limit = 0;          ///< bytes at the most
    std::chrono::seconds timeout{0}; ///< in all; 0 for none, then it is given up after 30 s without a byte
};

/// How much has come, in bytes; the total when the server told it.
using DownloadProgress = std::function<void(std::int64_t received, std::optional<std::int64_t> total)>;

/// Downloads with the helper program of the bundle, a process for each: cancelled by ending it.
class Downloader {
public:
    /// `helper`: path of the program.
    explicit Downloader(QString helper) : m_helper(std::move(helper)) {}

    /// The final answer's HTTP status, 0 when it was no HTTP answer; the file holds the body of a 200. Fails in the
    /// words of the transport.
    QCoro::Task<std::expected<int, QString>> download(DownloadRequest request, DownloadProgress progress,
                                                      std::stop_token stop) const;

    /// The body of a small document; see download().
    struct Document {
        int status = 0;
        QByteArray body;
    };
    QCoro::Task<std::expected<Document, QString>> fetch(QUrl url, std::int64_t limit, std::chrono::seconds timeout,
                                                        std::stop_token stop) const;

private:
    QString m_helper;
};

} // namespace tunedeck
