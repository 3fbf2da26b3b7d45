#pragma once

#include "TunedeckCore/Support/Json/Record.h"

#include <QCoroTask>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <array>
#include <expected>
#include <optional>
#include <stop_token>
#include <vector>

namespace tunedeck {

/// A kind of assistant connection, in the order in which they are listed.
enum class Assistant { chatgpt, claude, telegram, iphone };

/// All kinds in order.
inline constexpr std::array allAssistants{Assistant::chatgpt, Assistant::claude, Assistant::telegram,
                                          Assistant::iphone};

/// What is known of a kind of assistant.
struct AssistantInfo {
    QString rawValue;       ///< "chatgpt", "claude", "telegram", "shortcut": its identity
    QString name;           ///< display name
    QString cost;           ///< plan, "Free" or "Paid plan"
    QString systemImage;    ///< symbol name
    QString guide;          ///< last component of its guide's path
    QString example;        ///< a request to try
    QStringList setupSteps; ///< sentences
};

/// What is known of an assistant.
const AssistantInfo& info(Assistant assistant);

/// The kind with exactly that raw value.
std::optional<Assistant> assistantFromRawValue(const QString& rawValue);

/// Its setup guide on the product's web endpoint.
QUrl guideURL(Assistant assistant);

/// One connection between the user's library and an assistant, as the service reports it. Its members are named in
/// JSON as they are here (json::Keys::AsWritten).
struct AssistantLink {
    QString id;
    QString kind; ///< an assistant's raw value; unknown ones are kept
    std::optional<QString> label;
    std::optional<QString> createdAt;
    std::optional<QString> lastUsedAt;
    std::optional<QString> url; ///< private; absent when the link was made on another computer
    std::optional<QString> apiUrl;
    std::optional<QString> token;
    std::optional<bool> paired;
    std::optional<QString> telegramUsername;
    std::optional<QString> expiresAt;

    [[nodiscard]] std::optional<Assistant> assistant() const;
    /// Telegram: paired; every other kind: used at least once.
    [[nodiscard]] bool isConnected() const;
    [[nodiscard]] std::optional<QDateTime> lastUsed() const;
    [[nodiscard]] std::optional<QDateTime> expires() const;
    [[nodiscard]] QString displayName() const;
    /// Whether an unpaired Telegram link's code no longer works at that moment.
    [[nodiscard]] bool pairingExpired(const QDateTime& now) const;
    bool operator==(const AssistantLink&) const = default;
};

template<>
struct json::Members<AssistantLink> {
    static constexpr auto list = std::tuple{member("id", &AssistantLink::id),
                                            member("kind", &AssistantLink::kind),
                                            member("label", &AssistantLink::label),
                                            member("createdAt", &AssistantLink::createdAt),
                                            member("lastUsedAt", &AssistantLink::lastUsedAt),
                                            member("url", &AssistantLink::url),
                                            member("apiUrl", &AssistantLink::apiUrl),
                                            member("token", &AssistantLink::token),
                                            member("paired", &AssistantLink::paired),
                                            member("telegramUsername", &AssistantLink::telegramUsername),
                                            member("expiresAt", &AssistantLink::expiresAt)};
};

/// A private URL as it is shown while secrets are hidden.
QString maskingSecretPath(const QString& url);

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
