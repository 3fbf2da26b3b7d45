#pragma once

#include "TunedeckCore/Support/Json/Members.h"

#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <optional>
#include <stop_token>

namespace tunedeck {

/// Requests actions on the Rekordbox library; one attempt and 120 seconds each. Failures are replies with `ok` false.
struct LibraryClient {
    struct Reply {
        bool ok = false;
        std::optional<QString> message = {};
        std::optional<QString> error = {};
        std::optional<QString> version = {};
        bool operator==(const Reply&) const = default;

        static constexpr auto members = json::members<&Reply::ok, &Reply::message, &Reply::error, &Reply::version>;
    };

    std::optional<QUrl> baseURL = {}; ///< default: resolved by ServiceEndpoint for each call

    QCoro::Task<Reply> restore(QString version, std::stop_token stop = {}) const;
    QCoro::Task<Reply> applyNow(std::stop_token stop = {}) const;
    QCoro::Task<Reply> takeBaseline(std::stop_token stop = {}) const;
    QCoro::Task<Reply> retryFailed(std::stop_token stop = {}) const;
    QCoro::Task<Reply> dismissFailed(std::stop_token stop = {}) const;
};

} // namespace tunedeck
