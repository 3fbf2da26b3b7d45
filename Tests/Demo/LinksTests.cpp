#include "Tests/Demo/TestWorld.h"

#include <gtest/gtest.h>

namespace tunedeck::demo {

using namespace std::chrono_literals;

namespace {

Link made(const LinkResult& result) {
    const auto* link = std::get_if<Link>(&result);
    EXPECT_NE(link, nullptr);
    return link == nullptr ? Link{} : *link;
}

std::string codeOf(const LinkResult& result) {
    const auto* problem = std::get_if<LinkProblem>(&result);
    return problem == nullptr ? "" : problem->code;
}

const Link* find(const TestWorld& test, const std::string& id) {
    const auto& links = test.state().links.all;
    const auto found = std::ranges::find(links, id, &Link::id);
    return found == links.end() ? nullptr : &*found;
}

} // namespace

TEST(DemoLinks, EachKindGetsItsOwnSecretAndIsUsedAfterAWhile) {
    TestWorld test("fresh");
    const Link claude = made(test.world.createLink(test.now, link_kind::claude, "Claude"));
    const Link shortcut = made(test.world.createLink(test.now, link_kind::shortcut, "iPhone"));
    EXPECT_TRUE(claude.url->ends_with("/mcp"));
    EXPECT_FALSE(claude.token);
    EXPECT_TRUE(shortcut.apiUrl && shortcut.token);
    EXPECT_FALSE(shortcut.url);
    EXPECT_NE(claude.id, shortcut.id);
    EXPECT_FALSE(claude.isConnected());

    test.live(1min);
    EXPECT_TRUE(find(test, claude.id)->isConnected());
    EXPECT_TRUE(find(test, shortcut.id)->isConnected());

    const Link renewed = made(test.world.rotateLink(test.now, claude.id));
    EXPECT_EQ(renewed.id, claude.id);
    EXPECT_NE(renewed.url, claude.url);
    EXPECT_FALSE(renewed.isConnected()) << "nobody has used the new URL yet";
}

TEST(DemoLinks, APairingCodeExpiresAndARenewedOneIsPaired) {
    TestWorld expired("telegram-expired");
    EXPECT_LE(*expired.state().links.all.front().expiresAt, expired.now);
    const std::string id = expired.state().links.all.front().id;
    const auto oldUrl = expired.state().links.all.front().url;
    const Link renewed = made(expired.world.rotateLink(expired.now, id));
    EXPECT_EQ(*renewed.expiresAt, expired.now + 10min);
    EXPECT_NE(renewed.url, oldUrl);
    EXPECT_NE(renewed.url->find("?start="), std::string::npos);
    expired.live(1h);
    EXPECT_FALSE(find(expired, id)->isConnected()) << "in a standing scenario nobody scans it";

    TestWorld fresh("fresh");
    const Link telegram = made(fresh.world.createLink(fresh.now, link_kind::telegram, "Telegram"));
    EXPECT_EQ(telegram.paired, false);
    fresh.live(1min);
    const Link* paired = find(fresh, telegram.id);
    EXPECT_EQ(paired->paired, true);
    EXPECT_FALSE(paired->telegramUsername->empty());
    EXPECT_FALSE(paired->expiresAt);
}

TEST(DemoLinks, ACodeThatExpiredBeforeItWasScannedPairsNobody) {
    TestWorld test("fresh");
    const Link telegram = made(test.world.createLink(test.now, link_kind::telegram, "Telegram"));
    test.now += 11min;
    test.world.advance(test.now);
    EXPECT_EQ(find(test, telegram.id)->paired, false);
}

TEST(DemoLinks, FailuresSayWhyInACodeAndChangeNothing) {
    const auto count = [](const TestWorld& test) { return test.state().links.all.size(); };
    TestWorld quiet("quiet");
    const auto before = count(quiet);
    EXPECT_EQ(codeOf(quiet.world.createLink(quiet.now, "watch", "Watch")), "unknown_kind");
    EXPECT_EQ(codeOf(quiet.world.rotateLink(quiet.now, "nobody")), "link_not_found");
    EXPECT_EQ(quiet.world.deleteLink(quiet.now, "nobody")->status, 404);
    EXPECT_EQ(count(quiet), before);

    TestWorld off("cloud-off");
    EXPECT_EQ(codeOf(off.world.createLink(off.now, link_kind::claude, "Claude")), "cloud_disabled");
    TestWorld unreachable("cloud-unreachable");
    const std::string id = unreachable.state().links.all.front().id;
    EXPECT_EQ(unreachable.world.deleteLink(unreachable.now, id)->code, "cloud_unreachable");
    EXPECT_NE(find(unreachable, id), nullptr);
    TestWorld noTelegram("no-telegram");
    EXPECT_EQ(codeOf(noTelegram.world.createLink(noTelegram.now, link_kind::telegram, "Telegram")),
              "telegram_not_configured");
    EXPECT_EQ(codeOf(noTelegram.world.createLink(noTelegram.now, link_kind::claude, "Claude")), "");
}

TEST(DemoLinks, AFirstRunComesAliveWithItsFirstAssistantAndToolsOnly) {
    TestWorld test("fresh");
    EXPECT_EQ(test.live(24h), 0);
    test.world.installTools(test.now);
    made(test.world.createLink(test.now, link_kind::claude, "Claude"));
    test.live(30min);
    EXPECT_GT(test.state().jobs.recent.size(), 3U);
    EXPECT_GT(test.state().library->backups.size(), 1U);
}

} // namespace tunedeck::demo
