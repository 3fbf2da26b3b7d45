#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"

namespace tunedeck::test {

namespace {

PanelState stateWith(std::vector<AssistantLink> links) {
    PanelState state;
    state.service = ServiceState::running(goodStatus());
    state.links = std::move(links);
    return state;
}

LinkRowView row(const PanelState& state) {
    return assistantsCard(state, moment()).links.at(0);
}

AssistantLink pairing(std::optional<QString> expiresAt) {
    AssistantLink made = link("t", "telegram");
    made.url = u"https://t.me/bot?start=abc"_s;
    made.expiresAt = std::move(expiresAt);
    return made;
}

} // namespace

TEST(AssistantsCard, OffersTheAssistantsThatAreNotConnected) {
    const AssistantsView empty = assistantsCard(stateWith({}), moment());
    EXPECT_FALSE(empty.emptyText.isEmpty());
    EXPECT_EQ(empty.revealLabel, u""_s);
    ASSERT_EQ(empty.connect.size(), 4);
    const ConnectRowView& first = empty.connect[0];
    EXPECT_EQ((QStringList{first.name, first.help, first.plan}),
              (QStringList{u"ChatGPT"_s, u"Connect ChatGPT (paid plan)"_s, u"Paid plan"_s}));
    EXPECT_EQ(empty.connect[1].plan, QString());

    const AssistantsView some = assistantsCard(stateWith({link("a", "shortcut"), link("b", "gemini")}), moment());
    ASSERT_EQ(some.connect.size(), 3);
    EXPECT_EQ(some.connect[2].name, u"Telegram");
    EXPECT_NE(some.revealLabel, u""_s);
    EXPECT_EQ(some.emptyText, QString());
}

TEST(LinkRow, ShowsTheSecretsOfEachKindMaskedOrRevealed) {
    AssistantLink claude = link("c", "claude");
    claude.url = u"https://x.example/u/k7QxPz81mWv0aVh8Kd/mcp"_s;
    AssistantLink phone = link("s", "shortcut");
    phone.apiUrl = u"https://x.example/api"_s;
    phone.token = u"secret-token"_s;
    PanelState state = stateWith({claude, phone});
    state.copied = u"s.key"_s;
    const auto rows = assistantsCard(state, moment()).links;
    EXPECT_EQ(rows[0].kind, look::LinkKind::PrivateUrl);
    EXPECT_EQ(rows[0].fields.at(0).key, u"c.url");
    EXPECT_FALSE(rows[0].fields.at(0).shownValue.contains(u"k7QxPz81mWv0aVh8Kd"));
    EXPECT_EQ(rows[1].kind, look::LinkKind::Shortcut);
    ASSERT_EQ(rows[1].fields.size(), 2);
    EXPECT_EQ(rows[1].fields[0].label, u"URL");
    EXPECT_EQ(rows[1].fields[0].button, u"Copy");
    EXPECT_EQ(rows[1].fields[1].shownValue, u"secr…");
    EXPECT_EQ(rows[1].fields[1].button, u"Copied");

    state.revealSecrets = true;
    const AssistantsView revealed = assistantsCard(state, moment());
    EXPECT_EQ(revealed.revealSymbol, u"eye.slash");
    EXPECT_EQ(revealed.links[0].fields.at(0).shownValue, u"https://x.example/u/k7QxPz81mWv0aVh8Kd/mcp");
    EXPECT_EQ(revealed.links[1].fields.at(1).shownValue, u"secret-token");
}

TEST(LinkRow, FollowsItsUseAndPairing) {
    const QString noSecret = u"Made on another Mac or before a reinstall: choose New %1 to get one here."_s;
    AssistantLink used = link("c", "claude");
    used.lastUsedAt = ago(305);
    AssistantLink paired = pairing(ago(-600));
    paired.paired = true;
    const struct {
        AssistantLink link;
        QStringList texts; ///< detail, guide, renewal, start of the text
        bool connected = false;
        bool pairing = false;
    } cases[] = {
        {link("c", "claude"), {u"· not used yet"_s, u"Setup guide"_s, u"New URL…"_s, noSecret.arg(u"URL"_s)}},
        {used, {u"· used 5 minutes ago"_s, {}, u"New URL…"_s, noSecret.arg(u"URL"_s)}, true},
        {link("s", "shortcut"), {u"· not used yet"_s, u"Setup guide"_s, u"New Key…"_s, noSecret.arg(u"Key"_s)}},
        {pairing(ago(-600)), {u"· waiting for Start"_s, {}, {}, {}}, false, true},
        {paired, {u"· paired"_s, {}, u"New Code…"_s, u"Send the bot"_s}, true},
    };
    for (const auto& [link, texts, connected, isPairing] : cases) {
        const LinkRowView view = row(stateWith({link}));
        EXPECT_EQ((QStringList{view.detail, view.guideTitle, view.menu.renew, view.text.left(texts[3].size())}), texts);
        EXPECT_EQ(view.connected, connected) << view.detail.toStdString();
        EXPECT_EQ(view.pairing.shown, isPairing) << view.detail.toStdString();
        EXPECT_TRUE(view.fields.isEmpty());
    }
    EXPECT_EQ(row(stateWith({link("x", "gemini")})).guideTitle, QString()) << "an unknown assistant has no guide";
}

TEST(LinkRow, DescribesControlsOfLinksWithTheSameNameDifferently) {
    AssistantLink claude = link("c", "claude");
    claude.url = u"https://x.example/u/abcdef/mcp"_s;
    AssistantLink second = claude;
    second.id = u"d"_s;
    AssistantLink chat = claude;
    chat.kind = u"chatgpt"_s;
    const auto rows = assistantsCard(stateWith({claude, second, chat}), moment()).links;
    EXPECT_EQ(rows[0].menu.description, u"Claude, 1 of 2 · not used yet");
    EXPECT_EQ(rows[1].menu.description, u"Claude, 2 of 2 · not used yet");
    EXPECT_EQ(rows[2].menu.description, u"ChatGPT · not used yet");
    EXPECT_EQ(rows[1].fields.at(0).description, u"Copy this assistant's private URL (Claude, 2 of 2)");
    EXPECT_NE(rows[0].guideDescription, rows[1].guideDescription);
    EXPECT_EQ(rows[2].guideDescription, rows[2].guideHelp) << "already unique";
    EXPECT_EQ(row(stateWith({claude})).fields.at(0).description, u"Copy this assistant's private URL");
}

TEST(TelegramPairing, FollowsTheCodeUntilItExpires) {
    const TelegramPairingView fresh = telegramPairing(pairing(ago(-61)), false, moment());
    EXPECT_EQ((QStringList{fresh.expiryNote, fresh.openButton}),
              (QStringList{u"Expires in 2 min"_s, u"Open Telegram"_s}));
    EXPECT_EQ(expiryNote(pairing(ago(-60)), moment()), u"Expires in under a minute");
    EXPECT_EQ(expiryNote(pairing(ago(0)), moment()), QString());
    EXPECT_EQ(expiryNote(pairing({}), moment()), QString());
    const TelegramPairingView expired = telegramPairing(pairing(ago(0)), false, moment());
    EXPECT_TRUE(expired.expired);
    EXPECT_EQ((QStringList{expired.text, expired.newCodeButton, expired.openButton}),
              (QStringList{u"This code has expired."_s, u"Get a New Code"_s, {}}));
    const TelegramPairingView elsewhere = telegramPairing(link("t", "telegram"), true, moment());
    EXPECT_EQ(elsewhere.text, u"Paired from another Mac or before a reinstall.");
    EXPECT_TRUE(elsewhere.busy && elsewhere.startUrl.isEmpty());
}

} // namespace tunedeck::test
