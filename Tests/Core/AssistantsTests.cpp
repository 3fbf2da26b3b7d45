#include "Tests/Helpers/Test.h"
#include "TunedeckCore/Masking.h"
#include "TunedeckCore/Service/AssistantLink.h"

namespace tunedeck::test {

TEST(AssistantLink, IsConnectedOncePairedOrUsed) {
    AssistantLink link{.id = {}, .kind = u"chatgpt"_s, .paired = true};
    EXPECT_FALSE(link.isConnected());
    link.lastUsedAt = u"not a time"_s;
    EXPECT_TRUE(link.isConnected());
    EXPECT_EQ(link.lastUsed(), std::nullopt);
    link = {.id = {}, .kind = u"telegram"_s, .lastUsedAt = u"2025-03-01T18:04:05Z"_s};
    EXPECT_FALSE(link.isConnected());
    EXPECT_EQ(link.lastUsed(), QDateTime(QDate(2025, 3, 1), QTime(18, 4, 5), Qt::UTC));
    link.paired = true;
    EXPECT_TRUE(link.isConnected());
}

TEST(AssistantLink, IsNamedByUserNameLabelOrKind) {
    const struct {
        QString kind;
        std::optional<QString> label, userName;
        bool paired;
        QString name;
    } rows[] = {
        {u"telegram"_s, {}, {}, false, u"Telegram"_s},
        {u"telegram"_s, u"Mine"_s, u"dj%1"_s, false, u"Mine"_s},
        {u"telegram"_s, u"Mine"_s, u"dj%1"_s, true, u"Telegram (@dj%1)"_s},
        {u"telegram"_s, u"Mine"_s, u""_s, true, u"Mine"_s},
        {u"shortcut"_s, {}, u"dj"_s, true, u"iPhone"_s},
        {u"smart speaker"_s, {}, {}, false, u"Smart Speaker"_s},
        {u"XBOX-éa"_s, {}, {}, false, u"Xbox-Éa"_s},
    };
    for (const auto& [kind, label, userName, paired, name] : rows) {
        const AssistantLink link{
            .id = {}, .kind = kind, .label = label, .paired = paired, .telegramUsername = userName};
        EXPECT_EQ(link.displayName(), name);
    }
}

TEST(AssistantLink, ExpiresOnlyWhilePairing) {
    AssistantLink link{.id = {}, .kind = u"telegram"_s};
    const QDateTime end(QDate(2025, 3, 1), QTime(18, 4, 5, 500), Qt::UTC);
    EXPECT_FALSE(link.pairingExpired(end));
    link.expiresAt = u"2025-03-01T19:04:05.5+01:00"_s;
    EXPECT_FALSE(link.pairingExpired(end.addMSecs(-1)));
    EXPECT_TRUE(link.pairingExpired(end));
    link.paired = true;
    EXPECT_FALSE(link.pairingExpired(end));
    link = {.id = {}, .kind = u"shortcut"_s, .expiresAt = link.expiresAt};
    EXPECT_FALSE(link.pairingExpired(end));
}

TEST(AssistantLink, MasksTheSecretSegmentOfAPrivateUrl) {
    EXPECT_EQ(maskingSecretPath(u"https://r.example/c/0123456789abcdef/mcp"_s), u"https://r.example/c/0123…/mcp"_s);
    EXPECT_EQ(maskingSecretPath(u"/é123456789abcde🇩🇪/mcp"_s), u"/é123…/mcp"_s);
    for (const auto& shown :
         {u"https://r.example/c/0123456789abcde/mcp"_s, u"https://r.example/c/0123456789abcdef/mcp/"_s,
          u"https://r.example/c/0123456789abcdef/MCP"_s, u"https://r.example/0123456789abcdef/x/mcp"_s, u"mcp"_s,
          u"/e\u0301é2345678abcde🇩🇪/mcp"_s}) {
        EXPECT_EQ(maskingSecretPath(shown), shown);
    }
}

} // namespace tunedeck::test
