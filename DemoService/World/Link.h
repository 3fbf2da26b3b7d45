#pragma once

#include "DemoService/World/Moment.h"
#include "TunedeckCore/Support/Json/Record.h"

#include <QLatin1StringView>
#include <QString>

#include <optional>
#include <tuple>

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
};

} // namespace tunedeck::demo

template<>
struct tunedeck::json::Members<tunedeck::demo::Link> {
    using Link = demo::Link;
    static constexpr auto list = std::tuple{member("id", &Link::id),
                                            member("kind", &Link::kind),
                                            member("label", &Link::label),
                                            member("createdAt", &Link::createdAt),
                                            member("lastUsedAt", &Link::lastUsedAt),
                                            member("url", &Link::url),
                                            member("apiUrl", &Link::apiUrl),
                                            member("token", &Link::token),
                                            member("paired", &Link::paired),
                                            member("telegramUsername", &Link::telegramUsername),
                                            member("expiresAt", &Link::expiresAt)};
    static constexpr auto internal = std::tuple{member("firstUseAt", &Link::firstUseAt)};
};
