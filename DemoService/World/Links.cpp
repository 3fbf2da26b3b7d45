#include "DemoService/World/Links.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace tunedeck::demo {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr auto part = "links"_L1;

Links::Error noSuchLink() {
    return {404, u"link_not_found"_s, u"This link doesn't exist any more."_s};
}

Links::Error telegramMissing() {
    return {503, u"telegram_not_configured"_s, u"The Telegram bot isn't set up."_s};
}

} // namespace

std::unexpected<Links::Error> Links::refused(StepContext& context, Error error) {
    context.warn(part, u"refused ("_s + error.code + u"): "_s + error.text);
    return std::unexpected(std::move(error));
}

void Links::renewSecret(StepContext& context, Link& link) const {
    link.lastUsedAt.reset();
    if (link.kind == link_kind::telegram) {
        link.url = endpoint + u"/telegram?start="_s + context.random.token(20);
        link.expiresAt = wholeSecond(context.after(10min));
        link.paired = false;
        link.telegramUsername.reset();
    } else if (link.kind == link_kind::shortcut) {
        link.apiUrl = endpoint + u"/api/requests"_s;
        link.token = u"td_"_s + context.random.token(40);
    } else {
        link.url = endpoint + u"/c/"_s + context.random.token(32) + u"/mcp"_s;
    }
    link.firstUseAt = getUsed ? std::optional(context.afterBetween(20s, 40s)) : std::nullopt;
}

Links::Result<Link> Links::create(StepContext& context, const QString& kind, const std::optional<QString>& label) {
    static constexpr std::array kinds{link_kind::chatgpt, link_kind::claude, link_kind::telegram, link_kind::shortcut};
    if (std::ranges::find(kinds, kind) == kinds.end()) {
        return refused(context, {400, u"unknown_kind"_s, u"tunedeck doesn't know this kind of assistant."_s});
    }
    if (kind == link_kind::telegram && !telegramConfigured) {
        return refused(context, telegramMissing());
    }
    Link link{.id = context.random.token(12), .kind = kind, .label = label, .createdAt = context.timestamp()};
    renewSecret(context, link);
    context.info(part, u"created "_s + kind + u" link "_s + link.id);
    return all.emplace_back(std::move(link));
}

Links::Result<Link> Links::rotate(StepContext& context, const QString& id) {
    const auto link = std::ranges::find(all, id, &Link::id);
    if (link == all.end()) {
        return refused(context, noSuchLink());
    }
    if (link->kind == link_kind::telegram && !telegramConfigured) {
        return refused(context, telegramMissing());
    }
    renewSecret(context, *link);
    context.info(part, u"renewed "_s + link->kind + u" link "_s + link->id);
    return *link;
}

Links::Result<void> Links::remove(StepContext& context, const QString& id) {
    if (std::erase_if(all, [&](const Link& link) { return link.id == id; }) == 0) {
        return refused(context, noSuchLink());
    }
    context.info(part, u"deleted link "_s + id);
    return {};
}

void Links::advance(StepContext& context) {
    for (Link& link : all) {
        if (!context.isDue(link.firstUseAt)) {
            continue;
        }
        link.firstUseAt.reset();
        if (link.kind != link_kind::telegram) {
            link.lastUsedAt = context.timestamp();
            context.info(part, link.kind + u" link "_s + link.id + u" was used for the first time"_s);
        } else if (!context.isDue(link.expiresAt)) {
            link.paired = true;
            link.lastUsedAt = context.timestamp();
            link.telegramUsername =
                context.random.oneOf(QStringList{u"dj_nightowl"_s, u"anna_spins"_s, u"vinyl_tom"_s});
            link.expiresAt.reset();
            link.url.reset();
            context.info(part, u"Telegram chat paired with @"_s + *link.telegramUsername);
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

void Links::noteUse(StepContext& context) {
    std::vector<Link*> connected;
    for (Link& link : all) {
        if (link.isConnected()) {
            connected.push_back(&link);
        }
    }
    if (!connected.empty()) {
        context.random.oneOf(connected)->lastUsedAt = context.timestamp();
    }
}

} // namespace tunedeck::demo
