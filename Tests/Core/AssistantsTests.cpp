#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Masking.h"
#include "TunedeckCore/Service/AssistantLink.h"

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

AssistantLink link(const QString& kind) {
    AssistantLink link;
    link.kind = kind;
    return link;
}

TEST(AssistantLink, IsConnectedOncePairedOrUsed) {
    AssistantLink used = link(u"chatgpt"_s);
    used.paired = true;
    EXPECT_FALSE(used.isConnected());
    used.lastUsedAt = u"not a time"_s;
    EXPECT_TRUE(used.isConnected());
    EXPECT_EQ(used.lastUsed(), std::nullopt);
    AssistantLink telegram = link(u"telegram"_s);
    telegram.lastUsedAt = u"2025-03-01T18:04:05Z"_s;
    EXPECT_FALSE(telegram.isConnected());
    EXPECT_EQ(telegram.lastUsed(), QDateTime(QDate(2025, 3, 1), QTime(18, 4, 5), Qt::UTC));
    telegram.paired = true;
    EXPECT_TRUE(telegram.isConnected());
}

TEST(AssistantLink, IsNamedByUserNameLabelOrKind) {
    AssistantLink telegram = link(u"telegram"_s);
    EXPECT_EQ(telegram.displayName(), u"Telegram"_s);
    telegram.telegramUsername = u"dj%1"_s;
    telegram.label = u"Mine"_s;
    EXPECT_EQ(telegram.displayName(), u"Mine"_s);
    telegram.paired = true;
    EXPECT_EQ(telegram.displayName(), u"Telegram (@dj%1)"_s);
    telegram.telegramUsername = u""_s;
    EXPECT_EQ(telegram.displayName(), u"Mine"_s);
    AssistantLink shortcut = link(u"shortcut"_s);
    shortcut.telegramUsername = u"dj"_s;
    shortcut.paired = true;
    EXPECT_EQ(shortcut.displayName(), u"iPhone"_s);
    EXPECT_EQ(link(u"smart speaker"_s).displayName(), u"Smart Speaker"_s);
    EXPECT_EQ(link(u"XBOX-éa"_s).displayName(), u"Xbox-Éa"_s);
}

TEST(AssistantLink, ExpiresOnlyWhilePairing) {
    AssistantLink telegram = link(u"telegram"_s);
    const QDateTime end(QDate(2025, 3, 1), QTime(18, 4, 5, 500), Qt::UTC);
    EXPECT_FALSE(telegram.pairingExpired(end));
    telegram.expiresAt = u"2025-03-01T19:04:05.5+01:00"_s;
    EXPECT_FALSE(telegram.pairingExpired(end.addMSecs(-1)));
    EXPECT_TRUE(telegram.pairingExpired(end));
    telegram.paired = true;
    EXPECT_FALSE(telegram.pairingExpired(end));
    AssistantLink other = link(u"shortcut"_s);
    other.expiresAt = telegram.expiresAt;
    EXPECT_FALSE(other.pairingExpired(end));
}

TEST(AssistantLink, MasksTheSecretSegmentOfAPrivateUrl) {
    EXPECT_EQ(maskingSecretPath(u"https://r.example/c/0123456789abcdef/mcp"_s), u"https://r.example/c/0123…/mcp"_s);
    EXPECT_EQ(maskingSecretPath(u"0123456789abcdef/mcp"_s), u"0123…/mcp"_s);
    EXPECT_EQ(maskingSecretPath(u"/é123456789abcde🇩🇪/mcp"_s), u"/é123…/mcp"_s);
    for (const auto& shown :
         {u"https://r.example/c/0123456789abcde/mcp"_s, u"https://r.example/c/0123456789abcdef/mcp/"_s,
          u"https://r.example/c/0123456789abcdef/MCP"_s, u"https://r.example/c/0123456789abcdef"_s,
          u"https://r.example/0123456789abcdef/x/mcp"_s, u"https://r.example/0123456789abcdef/mcp?x"_s, u"mcp"_s, u""_s,
          u"/mcp"_s, u"/e\u0301é23456789abcde🇩🇪/mcp"_s.remove(u'9')}) {
        EXPECT_EQ(maskingSecretPath(shown), shown);
    }
}

} // namespace
