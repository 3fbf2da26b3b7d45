#pragma once

#include "TunedeckCore/Service/AssistantLink.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <expected>
#include <optional>
#include <stop_token>
#include <vector>

namespace tunedeck {

/// Lists, creates, renews and removes assistant links; 30 seconds per call.
struct LinksClient {
    /// Why a call failed.
    struct Failure {
        QString message; ///< for the user
        std::optional<QString> code = {};
        /// From the body of an error response.
        static Failure from(int status, const QByteArray& body);
        bool operator==(const Failure&) const = default;
    };
    template<class T>
    using Result = std::expected<T, Failure>;

    std::optional<QUrl> baseURL = {}; ///< default: resolved by ServiceEndpoint for each call

    QCoro::Task<Result<std::vector<AssistantLink>>> list(std::stop_token stop = {}) const;
    QCoro::Task<Result<AssistantLink>> create(Assistant assistant, std::stop_token stop = {}) const;
    /// Replaces the link's URL, key or pairing code.
    QCoro::Task<Result<AssistantLink>> rotate(QString id, std::stop_token stop = {}) const;
    QCoro::Task<Result<void>> remove(QString id, std::stop_token stop = {}) const;
};

} // namespace tunedeck
