#pragma once

#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <optional>
#include <stop_token>

namespace tunedeck {

/// Asks the service for actions on the Rekordbox library. One attempt each, 120 seconds in all; never fails but by a
/// reply whose ok is false.
struct LibraryClient {
    /// What the service answered.
    struct Reply {
        bool ok = false;
        std::optional<QString> message = {};
        std::optional<QString> error = {};
        std::optional<QString> version = {};
        bool operator==(const Reply&) const = default;
    };

    std::optional<QUrl> baseURL = {}; ///< found through ServiceEndpoint for each call when absent

    QCoro::Task<Reply> restore(QString version, std::stop_token stop = {}) const;
    QCoro::Task<Reply> applyNow(std::stop_token stop = {}) const;
    QCoro::Task<Reply> takeBaseline(std::stop_token stop = {}) const;
    QCoro::Task<Reply> retryFailed(std::stop_token stop = {}) const;
    QCoro::Task<Reply> dismissFailed(std::stop_token stop = {}) const;
};

} // namespace tunedeck
