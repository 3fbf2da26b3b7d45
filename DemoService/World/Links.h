#pragma once

#include "DemoService/World/Link.h"
#include "DemoService/World/StepContext.h"

#include <expected>
#include <vector>

namespace tunedeck::demo {

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
};

} // namespace tunedeck::demo

template<>
struct tunedeck::json::Members<tunedeck::demo::Links> {
    using Links = demo::Links;
    static constexpr auto list = std::tuple{member("links", &Links::all)};
    static constexpr auto internal =
        std::tuple{member("get_used", &Links::getUsed), member("telegram_configured", &Links::telegramConfigured),
                   member("endpoint", &Links::endpoint)};
};
