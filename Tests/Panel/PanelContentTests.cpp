#include "Tests/Helpers/Test.h"
#include "Tests/Panel/Fixtures.h"

namespace tunedeck::test {

TEST(AboutCard, ShowsEachStateOfTheUpdate) {
    const Release release{.version = u"2.0.0"_s, .notes = u"Faster."_s};
    const QString installing = u"Installing the update… Tunedeck restarts when it's done."_s;
    struct Case {
        UpdateState update;
        QStringList texts; ///< text, detail, button, help of disabled buttons
        double progress = -1;
    };
    const Case cases[] = {
        {{UpdateState::Checking{}}, {u"Checking for updates…"_s, {}, {}, u"Checking for updates…"_s}},
        {{UpdateState::UpToDate{moment().addSecs(-305)}}, {u"Up to date · checked 5 minutes ago"_s, {}, {}, {}}},
        {{UpdateState::Available{release}},
         {u"Tunedeck 2.0.0 is available."_s, u"Faster."_s, u"Update to 2.0.0"_s, {}}},
        {{UpdateState::Installing{}}, {installing, {}, {}, installing}},
        {{UpdateState::Installing{0.5}}, {installing, {}, {}, installing}, 0.5},
    };
    for (const auto& [update, texts, progress] : cases) {
        const AboutView card = aboutCard(u"1.0.0"_s, update, moment());
        EXPECT_EQ((QStringList{card.updateText, card.updateDetail, card.updateButton, card.busyHelp}), texts);
        EXPECT_EQ(card.busy, !card.busyHelp.isEmpty());
        EXPECT_EQ(card.progress, progress);
        EXPECT_EQ(card.version, u"Version 1.0.0");
    }
}

TEST(PanelContent, EachCardFollowsItsOwnBusyFlag) {
    ServiceStatus status = goodStatus();
    status.rekordboxDb = ServiceStatus::Library{};
    for (bool PanelState::* busyFlag : {&PanelState::linksBusy, &PanelState::libraryBusy, &PanelState::isRestarting}) {
        PanelState state;
        state.service = ServiceState::running(status);
        state.links = {link("t", "telegram")};
        state.*busyFlag = true;
        const PanelContent content = panelContent(state, moment());
        const TelegramPairingView pairing = content.assistants.links.at(0).pairing;
        for (const bool busy : {content.assistants.busy, pairing.busy, !pairing.newCodeHelp.isEmpty(),
                                content.assistants.connect.at(0).help.contains(u"Another link")}) {
            EXPECT_EQ(busy, state.linksBusy);
        }
        EXPECT_EQ(content.rekordbox.busy, state.libraryBusy);
        EXPECT_EQ(content.notRunning.starting, state.isRestarting);
        EXPECT_EQ(content.notRunning.button == u"Starting…", state.isRestarting);
        EXPECT_EQ(content.footer.restarting, state.isRestarting);
    }
}

TEST(PanelContent, ShowsCardsOnlyWhenTheyApply) {
    PanelState state;
    const auto shown = [&] {
        const PanelContent content = panelContent(state, moment());
        return QList<bool>{content.hiddenIcon.shown, content.notRunning.shown, content.recent.shown,
                           content.tools.shown,      content.banner.shown,     content.footer.opensAtLogin};
    };
    EXPECT_EQ(shown(), (QList<bool>{false, false, false, false, false, false}));
    state.service = ServiceState::notRunning();
    state.menuBarIcon.kind = MenuBarIconVisibility::Kind::hidden;
    state.opensAtLogin = true;
    EXPECT_EQ(shown(), (QList<bool>{true, true, false, false, false, true}));
    for (const auto& [error, note] : {std::pair(u"Failed."_s, u"Done."_s), {{}, u"Done."_s}}) {
        state.actionError = error.isEmpty() ? std::nullopt : std::optional(error);
        state.actionNote = note;
        const BannerView banner = panelContent(state, moment()).banner;
        EXPECT_TRUE(banner.shown);
        EXPECT_EQ(banner.text, error.isEmpty() ? note : error) << "the error rather than the note";
        EXPECT_EQ(banner.tone, error.isEmpty() ? look::Tone::Good : look::Tone::Warning);
    }
}

} // namespace tunedeck::test
