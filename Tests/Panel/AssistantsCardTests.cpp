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
    return assistantsCard(state, moment()).links.rows.at(0);
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
    EXPECT_EQ(textOf(empty.connect[0]),
              "id: chatgpt | name: ChatGPT | plan: Paid plan | accessibleName: ChatGPT, Paid plan | "
              "help: Connect ChatGPT (paid plan) | symbol: plus");

    const AssistantsView some = assistantsCard(stateWith({link("a", "shortcut"), link("b", "gemini")}), moment());
    ASSERT_EQ(some.connect.size(), 3);
    EXPECT_EQ(
        textOf(some.connect[2]),
        "id: telegram | name: Telegram | accessibleName: Telegram | help: Connect Telegram (free) | symbol: plus");
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
    const auto rows = assistantsCard(state, moment()).links.rows;
    EXPECT_EQ(textOf(rows[0]), "id: c | name: Claude | detail: · not used yet | "
                               "accessibleName: More, Claude | description: Claude · not used yet | renew: New URL… | "
                               "shownValue: https://x.example/u/k7Qx…/mcp | key: c.url | "
                               "help: Copy this assistant's private URL | "
                               "button: Copy | buttonName: Copy | "
                               "buttonSymbol: doc.on.doc | guideTitle: Setup guide | "
                               "guideHelp: How to set up Claude, on tunedeck.example | "
                               "guideName: Setup guide, Claude");
    EXPECT_EQ(textOf(rows[1]),
              "id: s | kind: Shortcut | name: iPhone | detail: · not used yet | "
              "accessibleName: More, iPhone | description: iPhone · not used yet | renew: New Key… | "
              "text: Build the Shortcut on your iPhone with these. | "
              "label: URL | shownValue: https://x.example/api | key: s.url | "
              "help: Copy the URL for the Shortcut | "
              "button: Copy | buttonName: Copy URL | buttonSymbol: doc.on.doc | label: Key | shownValue: secr… | "
              "key: s.key | help: Copy the Key for the Shortcut | "
              "button: Copied | buttonName: Copied Key | "
              "buttonSymbol: checkmark | guideTitle: Setup guide | "
              "guideHelp: How to set up iPhone, on tunedeck.example | "
              "guideName: Setup guide, iPhone");
    state.revealSecrets = true;
    const AssistantsView revealed = assistantsCard(state, moment());
    EXPECT_EQ(revealed.revealSymbol, u"eye.slash");
    EXPECT_EQ(revealed.links.rows[0].urlField.shownValue, u"https://x.example/u/k7QxPz81mWv0aVh8Kd/mcp");
    EXPECT_EQ(revealed.links.rows[1].keyField.shownValue, u"secret-token");
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
    }
    EXPECT_EQ(row(stateWith({link("x", "gemini")})).guideTitle, QString()) << "an unknown assistant has no guide";
}

TEST(LinkRow, NamesControlsOfLinksWithTheSameNameDifferently) {
    AssistantLink claude = link("c", "claude");
    claude.url = u"https://x.example/u/abcdef/mcp"_s;
    AssistantLink chat = claude;
    chat.kind = u"chatgpt"_s;
    const auto rows = assistantsCard(stateWith({claude, claude, chat}), moment()).links.rows;
    EXPECT_EQ(rows[0].menu.description, u"Claude, 1 of 2 · not used yet");
    EXPECT_EQ(rows[1].urlField.buttonName, u"Copy, Claude, 2 of 2");
    EXPECT_NE(rows[0].guideName, rows[1].guideName);
    EXPECT_EQ(rows[2].menu.accessibleName, u"More, ChatGPT");
    EXPECT_EQ(row(stateWith({claude})).menu.accessibleName, u"More") << "already unique";
}

TEST(TelegramPairing, FollowsTheCodeUntilItExpires) {
    const auto note = [](std::optional<QString> expiresAt) {
        return telegramPairing(pairing(std::move(expiresAt)), false, moment()).expiryNote;
    };
    EXPECT_EQ((QStringList{note(ago(-61)), note(ago(-60)), note(ago(0)), note({})}),
              (QStringList{u"Expires in 2 min"_s, u"Expires in under a minute"_s, {}, {}}));
    EXPECT_EQ(textOf(telegramPairing(pairing(ago(-600)), false, moment())),
              "shown: true | startUrl: https://t.me/bot?start=abc | "
              "text: Scan with your phone's camera, then tap Start in Telegram. | openButton: Open Telegram | "
              "openHelp: Opens the Tunedeck bot in Telegram on this Mac | "
              "openName: Open Telegram | newCodeButton: New Code | newCodeName: New Code | "
              "expiryNote: Expires in 10 min | qrName: QR code to pair Telegram");
    EXPECT_EQ(textOf(telegramPairing(pairing(ago(0)), false, moment())),
              "shown: true | startUrl: https://t.me/bot?start=abc | expired: true | text: This code has expired. | "
              "newCodeButton: Get a New Code | newCodeName: Get a New Code | qrName: QR code to pair Telegram");
    EXPECT_EQ(textOf(telegramPairing(link("t", "telegram"), true, moment())),
              "shown: true | text: Paired from another Mac or before a reinstall. | newCodeButton: New Code | "
              "newCodeHelp: Another link is being changed. | newCodeName: New Code | "
              "busy: true");
}

} // namespace tunedeck::test
