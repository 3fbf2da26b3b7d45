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
    EXPECT_FALSE(empty.canReveal);
    ASSERT_EQ(empty.connect.size(), 4);
    EXPECT_EQ(empty.connect[0].name, u"ChatGPT");
    EXPECT_EQ(empty.connect[0].help, u"Connect ChatGPT (paid plan)");
    EXPECT_EQ(empty.connect[0].plan, u"Paid plan");
    EXPECT_EQ(empty.connect[1].plan, QString());

    const AssistantsView some = assistantsCard(stateWith({link("a", "shortcut"), link("b", "gemini")}), moment());
    ASSERT_EQ(some.connect.size(), 3);
    EXPECT_EQ(some.connect[2].name, u"Telegram");
    EXPECT_TRUE(some.canReveal);
    EXPECT_EQ(some.emptyText, QString());
}

TEST(AssistantsCard, ShowsTheCloudLineOnlyWithTheCloudEnabled) {
    PanelState state = stateWith({});
    const auto line = [&](bool enabled, std::optional<bool> connected) {
        ServiceStatus status = goodStatus();
        status.cloud.enabled = enabled;
        status.cloud.connected = connected;
        state.service = ServiceState::running(status);
        return assistantsCard(state, moment()).cloudText;
    };
    EXPECT_EQ(line(true, true), u"Connected to Tunedeck cloud: requests arrive instantly.");
    EXPECT_EQ(line(true, false), u"Not connected right now. Requests wait in the cloud until this Mac is back.");
    EXPECT_EQ(line(true, {}), u"Cloud queue on.");
    EXPECT_EQ(line(false, true), QString());
    state.service = ServiceState::notRunning();
    EXPECT_EQ(assistantsCard(state, moment()).cloudText, QString());
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
    EXPECT_EQ(rows[0].menu.renew, u"New URL…");
    EXPECT_EQ(rows[0].fields.at(0).key, u"c.url");
    EXPECT_FALSE(rows[0].fields.at(0).shownValue.contains(u"k7QxPz81mWv0aVh8Kd"));
    EXPECT_EQ(rows[0].fields.at(0).button, u"Copy");
    EXPECT_EQ(rows[1].kind, look::LinkKind::Shortcut);
    EXPECT_EQ(rows[1].menu.renew, u"New Key…");
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

TEST(LinkRow, OffersTheGuideUntilTheFirstUse) {
    AssistantLink used = link("c", "claude");
    EXPECT_EQ(row(stateWith({used})).detail, u"· not used yet");
    EXPECT_EQ(row(stateWith({used})).guideTitle, u"Setup guide");
    EXPECT_FALSE(row(stateWith({used})).connected);
    used.lastUsedAt = ago(305);
    EXPECT_EQ(row(stateWith({used})).detail, u"· used 5 minutes ago");
    EXPECT_EQ(row(stateWith({used})).guideTitle, QString());
    EXPECT_TRUE(row(stateWith({used})).connected);
    EXPECT_EQ(row(stateWith({link("x", "gemini")})).guideTitle, QString()) << "an unknown assistant has no guide";
}

TEST(LinkRow, ShowsThePairingUntilTelegramIsPaired) {
    AssistantLink telegram = pairing(ago(-600));
    EXPECT_EQ(row(stateWith({telegram})).detail, u"· waiting for Start");
    EXPECT_TRUE(row(stateWith({telegram})).pairing.shown);
    EXPECT_EQ(row(stateWith({telegram})).menu.renew, QString());
    telegram.paired = true;
    EXPECT_EQ(row(stateWith({telegram})).detail, u"· paired");
    EXPECT_FALSE(row(stateWith({telegram})).pairing.shown);
    EXPECT_EQ(row(stateWith({telegram})).menu.renew, u"New Code…");
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

TEST(LinkRow, ExplainsASecretThatThisComputerDoesNotHave) {
    EXPECT_EQ(row(stateWith({link("a", "claude")})).text,
              u"Made on another Mac or before a reinstall: choose New URL to get one here.");
    const LinkRowView phone = row(stateWith({link("b", "shortcut")}));
    EXPECT_EQ(phone.text, u"Made on another Mac or before a reinstall: choose New Key to get one here.");
    EXPECT_TRUE(phone.fields.isEmpty());
}

TEST(TelegramPairing, FollowsTheCodeUntilItExpires) {
    const TelegramPairingView fresh = telegramPairing(pairing(ago(-61)), false, moment());
    EXPECT_EQ(fresh.expiryNote, u"Expires in 2 min");
    EXPECT_EQ(fresh.openButton, u"Open Telegram");
    EXPECT_EQ(expiryNote(pairing(ago(-60)), moment()), u"Expires in under a minute");
    EXPECT_EQ(expiryNote(pairing(ago(0)), moment()), QString());
    EXPECT_EQ(expiryNote(pairing({}), moment()), QString());
    const TelegramPairingView expired = telegramPairing(pairing(ago(0)), false, moment());
    EXPECT_TRUE(expired.expired);
    EXPECT_EQ(expired.text, u"This code has expired.");
    EXPECT_EQ(expired.newCodeButton, u"Get a New Code");
    EXPECT_EQ(expired.openButton, QString());
    const TelegramPairingView elsewhere = telegramPairing(link("t", "telegram"), true, moment());
    EXPECT_EQ(elsewhere.text, u"Paired from another Mac or before a reinstall.");
    EXPECT_TRUE(elsewhere.busy && elsewhere.startUrl.isEmpty());
}

} // namespace tunedeck::test
