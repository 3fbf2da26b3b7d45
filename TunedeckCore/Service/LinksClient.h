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

/// Lists, makes, renews and removes assistant links.
struct LinksClient {
    /// Why a call failed, in words for the user.
    struct Failure {
        QString message;
        std::optional<QString> code = {};
        /// Reads an error answer's body.
        static Failure from(int status, const QByteArray& body);
        bool operator==(const Failure&) const = default;
    };
    template<class T>
    using Result = std::expected<T, Failure>;

    std::optional<QUrl> baseURL = {}; ///< found through ServiceEndpoint for each call when absent

    QCoro::Task<Result<std::vector<AssistantLink>>> list(std::stop_token stop = {}) const;
    QCoro::Task<Result<AssistantLink>> create(Assistant assistant, std::stop_token stop = {}) const;
    /// Gives the link a new URL, key or pairing code.
    QCoro::Task<Result<AssistantLink>> rotate(QString id, std::stop_token stop = {}) const;
    QCoro::Task<Result<void>> remove(QString id, std::stop_token stop = {}) const;
};

} // namespace tunedeck
