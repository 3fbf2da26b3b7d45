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

TEST(AssistantsCard, OffersTheKindsThatAreNotConnected) {
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

TEST(AssistantsCard, CloudLineIsThereOnlyWithTheCloudOn) {
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

TEST(LinkRow, SaysWhereASecretWasMadeWhenItIsNotHere) {
    EXPECT_EQ(row(stateWith({link("a", "claude")})).text,
              u"Made on another Mac or before a reinstall: choose New URL to get one here.");
    const LinkRowView phone = row(stateWith({link("b", "shortcut")}));
    EXPECT_EQ(phone.text, u"Made on another Mac or before a reinstall: choose New Key to get one here.");
    EXPECT_TRUE(phone.fields.isEmpty());
}

TEST(TelegramPairing, FollowsTheCodeFromNewToExpired) {
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
