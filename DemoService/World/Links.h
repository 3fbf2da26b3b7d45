#pragma once

#include "DemoService/World/Turn.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace tunedeck::demo {

namespace link_kind {
inline constexpr auto chatgpt = "chatgpt";
inline constexpr auto claude = "claude";
inline constexpr auto telegram = "telegram";
inline constexpr auto shortcut = "shortcut";
} // namespace link_kind

/// One connection between an assistant and this computer.
struct Link {
    std::string id;
    std::string kind;
    std::optional<std::string> label;
    std::optional<Moment> createdAt;
    std::optional<Moment> lastUsedAt;
    std::optional<std::string> url;
    std::optional<std::string> apiUrl;
    std::optional<std::string> token;
    std::optional<bool> paired;
    std::optional<std::string> telegramUsername;
    std::optional<Moment> expiresAt;

    /// When the user on the other side first uses it; none when that doesn't happen by itself.
    std::optional<Moment> firstUseAt;

    bool isConnected() const { return kind == link_kind::telegram ? paired.value_or(false) : lastUsedAt.has_value(); }

    static void members(auto& self, auto& archive) {
        archive("id", self.id);
        archive("kind", self.kind);
        archive("label", self.label);
        archive("createdAt", self.createdAt);
        archive("lastUsedAt", self.lastUsedAt);
        archive("url", self.url);
        archive("apiUrl", self.apiUrl);
        archive("token", self.token);
        archive("paired", self.paired);
        archive("telegramUsername", self.telegramUsername);
        archive("expiresAt", self.expiresAt);
        archive.own("firstUseAt", self.firstUseAt);
    }
};

/// Why a link operation failed: an HTTP status, a code for programs and a sentence for people.
struct LinkProblem {
    int status;
    std::string code;
    std::string error;
};

using LinkResult = std::variant<Link, LinkProblem>;

/// The assistants' links.
struct Links {
    std::vector<Link> all;
    /// New links get used, and pairing codes scanned, after a while.
    bool getUsed = false;
    bool telegramConfigured = true;
    /// Scheme and host of the relay, under which the private URLs lie.
    std::string endpoint;

    LinkResult create(Turn& turn, const std::string& kind, std::optional<std::string> label);
    LinkResult rotate(Turn& turn, const std::string& id);
    /// Nothing when the link is gone now.
    std::optional<LinkProblem> remove(Turn& turn, const std::string& id);

    void advance(Turn& turn);
    std::optional<Moment> nextEvent() const;
    bool anyConnected() const;
    /// A request came in through one of the connected links.
    void noteUse(Turn& turn);
    /// Gives `link` a new secret and takes back what the old one had earned.
    void renewSecret(Turn& turn, Link& link) const;

    static void members(auto& self, auto& archive) {
        archive("links", self.all);
        archive.own("get_used", self.getUsed);
        archive.own("telegram_configured", self.telegramConfigured);
        archive.own("endpoint", self.endpoint);
    }
};

/// True for the kinds of assistant that can be connected.
bool isKnownKind(const std::string& kind);

} // namespace tunedeck::demo
