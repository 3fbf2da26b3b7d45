#pragma once

#include "DemoService/World/StepContext.h"
#include "TunedeckCore/Support/Json/Members.h"

#include <QLatin1StringView>
#include <QString>

#include <expected>
#include <optional>
#include <vector>

namespace tunedeck::demo {

namespace link_kind {
inline constexpr QLatin1StringView chatgpt("chatgpt");
inline constexpr QLatin1StringView claude("claude");
inline constexpr QLatin1StringView telegram("telegram");
inline constexpr QLatin1StringView shortcut("shortcut");
} // namespace link_kind

/// A private connection between one assistant and this computer.
struct Link {
    QString id;
    QString kind;
    std::optional<QString> label;
    std::optional<Moment> createdAt;
    std::optional<Moment> lastUsedAt;
    std::optional<QString> url;
    std::optional<QString> apiUrl;
    std::optional<QString> token;
    std::optional<bool> paired;
    std::optional<QString> telegramUsername;
    std::optional<Moment> expiresAt;

    std::optional<Moment> firstUseAt; ///< none when nobody starts to use the link

    bool isConnected() const { return kind == link_kind::telegram ? paired.value_or(false) : lastUsedAt.has_value(); }

    static constexpr auto members =
        json::members<&Link::id, &Link::kind, &Link::label, &Link::createdAt, &Link::lastUsedAt, &Link::url,
                      &Link::apiUrl, &Link::token, &Link::paired, &Link::telegramUsername, &Link::expiresAt>;
    static constexpr auto internalMembers = json::members<&Link::firstUseAt>;
};

/// The assistants' links.
struct Links {
    /// Why a request failed.
    struct Error {
        int status;   ///< of the HTTP response
        QString code; ///< for programs
        QString text; ///< for the user
    };
    template<class Type>
    using Result = std::expected<Type, Error>;

    std::vector<Link> all;
    bool getUsed = false; ///< new links are used, and pairing codes scanned, after a while
    bool telegramConfigured = true;
    QString endpoint; ///< scheme and host of the relay

    Result<Link> create(StepContext& context, const QString& kind, const std::optional<QString>& label);
    Result<Link> rotate(StepContext& context, const QString& id);
    Result<void> remove(StepContext& context, const QString& id);

    void advance(StepContext& context);
    std::optional<Moment> nextEvent() const;
    bool anyConnected() const;
    /// Marks one of the connected links as just used.
    void noteUse(StepContext& context);
    /// Gives `link` a new secret. It counts as unused then.
    void renewSecret(StepContext& context, Link& link) const;

    /// Logs the error and returns it.
    static std::unexpected<Error> refused(StepContext& context, Error error);

    static constexpr auto members =
        json::members<&Links::all, &Links::getUsed, &Links::telegramConfigured, &Links::endpoint>;
};

} // namespace tunedeck::demo
