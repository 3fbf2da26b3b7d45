#include "DemoService/World/Links.h"

#include "DemoService/World/Catalogue.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

constexpr auto subject = "links";
constexpr Span pairingTime = 10min;

LinkProblem refused(Turn& turn, LinkProblem problem) {
    turn.warn(subject, "refused (" + problem.code + "): " + problem.error);
    return problem;
}

LinkProblem noSuchLink(Turn& turn) {
    return refused(turn, {404, "link_not_found", "This link doesn't exist any more."});
}

LinkProblem telegramMissing(Turn& turn) {
    return refused(turn, {503, "telegram_not_configured", "The Telegram bot isn't set up."});
}

} // namespace

bool isKnownKind(const std::string& kind) {
    static constexpr std::array<std::string_view, 4> kinds{link_kind::chatgpt, link_kind::claude, link_kind::telegram,
                                                           link_kind::shortcut};
    return std::ranges::find(kinds, kind) != kinds.end();
}

void Links::renewSecret(Turn& turn, Link& link) const {
    link.lastUsedAt.reset();
    if (link.kind == link_kind::telegram) {
        link.url = endpoint + "/telegram?start=" + turn.random.token(20);
        link.expiresAt = wholeSecond(turn.in(pairingTime));
        link.paired = false;
        link.telegramUsername.reset();
    } else if (link.kind == link_kind::shortcut) {
        link.apiUrl = endpoint + "/api/requests";
        link.token = "td_" + turn.random.token(40);
    } else {
        link.url = endpoint + "/c/" + turn.random.token(32) + "/mcp";
    }
    link.firstUseAt = getUsed ? std::optional(turn.within(20s, 40s)) : std::nullopt;
}

LinkResult Links::create(Turn& turn, const std::string& kind, std::optional<std::string> label) {
    if (!isKnownKind(kind)) {
        return refused(turn, {400, "unknown_kind", "tunedeck doesn't know this kind of assistant."});
    }
    if (kind == link_kind::telegram && !telegramConfigured) {
        return telegramMissing(turn);
    }
    Link link;
    link.id = turn.random.token(12);
    link.kind = kind;
    link.label = std::move(label);
    link.createdAt = wholeSecond(turn.now);
    renewSecret(turn, link);
    turn.info(subject, "created " + kind + " link " + link.id);
    return all.emplace_back(std::move(link));
}

LinkResult Links::rotate(Turn& turn, const std::string& id) {
    const auto link = std::ranges::find(all, id, &Link::id);
    if (link == all.end()) {
        return noSuchLink(turn);
    }
    if (link->kind == link_kind::telegram && !telegramConfigured) {
        return telegramMissing(turn);
    }
    renewSecret(turn, *link);
    turn.info(subject, "renewed " + link->kind + " link " + link->id);
    return *link;
}

std::optional<LinkProblem> Links::remove(Turn& turn, const std::string& id) {
    if (std::erase_if(all, [&](const Link& link) { return link.id == id; }) == 0) {
        return noSuchLink(turn);
    }
    turn.info(subject, "deleted link " + id);
    return std::nullopt;
}

void Links::advance(Turn& turn) {
    for (Link& link : all) {
        if (!isDue(link.firstUseAt, turn.now)) {
            continue;
        }
        link.firstUseAt.reset();
        if (link.kind != link_kind::telegram) {
            link.lastUsedAt = wholeSecond(turn.now);
            turn.info(subject, link.kind + " link " + link.id + " was used for the first time");
        } else if (!isDue(link.expiresAt, turn.now)) {
            link.paired = true;
            link.lastUsedAt = wholeSecond(turn.now);
            link.telegramUsername = turn.random.oneOf(catalogue::telegramNames());
            link.expiresAt.reset();
            link.url.reset();
            turn.info(subject, "Telegram chat paired with @" + *link.telegramUsername);
        }
    }
}

std::optional<Moment> Links::nextEvent() const {
    std::optional<Moment> next;
    for (const Link& link : all) {
        next = earlier(next, link.firstUseAt);
    }
    return next;
}

bool Links::anyConnected() const {
    return std::ranges::any_of(all, &Link::isConnected);
}

void Links::noteUse(Turn& turn) {
    std::vector<Link*> connected;
    for (Link& link : all) {
        if (link.isConnected()) {
            connected.push_back(&link);
        }
    }
    if (!connected.empty()) {
        turn.random.oneOf(std::span<Link* const>(connected))->lastUsedAt = wholeSecond(turn.now);
    }
}

} // namespace tunedeck::demo
